// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"
#include "LumaroCore/Support/RecentMap.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace lumaro {

/// The URLs of covers that players said lately, one for a track. A player may take back what it said while the track
/// still plays; it stays.
class MprisCovers {
public:
    static constexpr std::size_t maxTracks = 32;
    /// Of all "data:" URLs together, which are whole pictures. Past that, the oldest are forgotten.
    static constexpr std::size_t maxDataBytes = std::size_t{16} * 1024 * 1024;

    /// An empty URL changes nothing.
    void put(MusicSource source, std::string trackKey, std::string url);
    std::optional<std::string> find(MusicSource source, std::string_view trackKey) const;

private:
    RecentMap<std::pair<MusicSource, std::string>, std::string> urls_{maxTracks};
};

} // namespace lumaro
