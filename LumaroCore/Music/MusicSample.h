// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Hash.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

enum class PlaybackState : std::uint8_t { playing, paused, stopped };

constexpr std::array<std::string_view, 3> namesOf(PlaybackState) {
    return {"playing", "paused", "stopped"};
}

/// What is asked of the look-up of covers.
struct ArtworkQuery {
    MusicSource source = MusicSource::spotify;
    std::string trackKey;
    std::string title;
    std::string artist;
    std::int64_t durationMs = 0; ///< 0 when it is not known

    bool operator==(const ArtworkQuery&) const = default;
};

/// One reading of one player. Album and track key stay on this computer.
struct MusicSample {
    PlaybackState state = PlaybackState::stopped;
    std::string title;
    std::string artist;
    std::string album;
    std::string trackKey; ///< identifies the track within its player
    std::int64_t durationMs = 0;
    std::int64_t progressMs = 0;
    MusicSource source = MusicSource::spotify;

    ArtworkQuery artworkQuery() const { return {source, trackKey, title, artist, durationMs}; }

    void hashInto(Hasher& hasher) const;
    bool operator==(const MusicSample&) const = default;
};

} // namespace lumaro
