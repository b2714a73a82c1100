// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/MusicSample.h"
#include "LumaroCore/Protocol/LumaroCoreError.h"

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumaro {

/// Finds the cover of a track. On the main thread.
class ArtworkFetcher {
public:
    /// A search under way. Dropping it means that its `then` is not called any more.
    class Search {
    public:
        Search() = default;
        Search(const Search&) = delete;
        Search& operator=(const Search&) = delete;
        virtual ~Search() = default;
    };
    /// An absolute URL that the partner may load, or none; a failure is a `LumaroCoreError::ArtworkUnavailable`.
    using Answer = std::expected<std::optional<std::string>, LumaroCoreError>;

    ArtworkFetcher() = default;
    ArtworkFetcher(const ArtworkFetcher&) = delete;
    ArtworkFetcher& operator=(const ArtworkFetcher&) = delete;
    virtual ~ArtworkFetcher() = default;

    /// Calls `then` once, never from within this call. `then` may drop its own search.
    [[nodiscard]] virtual std::unique_ptr<Search> fetch(ArtworkQuery query,
                                                        std::move_only_function<void(Answer)> then) = 0;
};

} // namespace lumaro
