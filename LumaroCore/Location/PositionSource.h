// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/Here.h"
#include "LumaroCore/Support/Coordinates.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace lumaro {

/// Whether this program may know where the computer is.
enum class LocationAccess : std::uint8_t {
    notDetermined, ///< nobody was asked, or has answered yet
    denied,        ///< a person said no
    restricted,    ///< the system does not offer it: no service, location switched off, locked down
    authorized,
};

constexpr std::array<std::string_view, 4> namesOf(LocationAccess) {
    return {"notDetermined", "denied", "restricted", "authorized"};
}

/// The computer's position, as its system finds it.
class PositionSource {
public:
    /// A question under way. Dropping it ends it, and with it the search for the position.
    class Search {
    public:
        Search() = default;
        Search(const Search&) = delete;
        Search& operator=(const Search&) = delete;
        virtual ~Search() = default;
    };
    struct Answer {
        LocationAccess access = LocationAccess::notDetermined;
        std::optional<Coordinates> position; ///< on earth; only where `access` is `authorized`
    };

    PositionSource() = default;
    PositionSource(const PositionSource&) = delete;
    PositionSource& operator=(const PositionSource&) = delete;
    virtual ~PositionSource() = default;

    /// Asks once, for a position as exact as `precision` takes; the system may ask the person first. `then` is called
    /// at most once, never from within this call, and not before there is a position or the certainty that none comes:
    /// a search that finds nothing goes on until it is dropped. `then` may drop its own search.
    [[nodiscard]] virtual std::unique_ptr<Search> search(HerePrecision precision,
                                                         std::move_only_function<void(Answer)> then) = 0;
};

} // namespace lumaro
