// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// The player.
enum class MusicSource : std::uint8_t { spotify, appleMusic };

constexpr std::array<std::string_view, 2> namesOf(MusicSource) {
    return {"spotify", "appleMusic"};
}

/// What plays on a device. The position of a playing track moves on from `progressMs` since `sampledAt`.
struct NowPlaying {
    bool isPlaying = false;
    std::int64_t progressMs = 0;
    Instant sampledAt;
    std::int64_t durationMs = 0;
    std::string title;
    std::string artist;
    std::optional<std::string> artworkURL;
    MusicSource source = MusicSource::spotify;

    static constexpr auto fields() {
        return std::tuple{Field{"isPlaying", &NowPlaying::isPlaying},   Field{"progressMs", &NowPlaying::progressMs},
                          Field{"sampledAt", &NowPlaying::sampledAt},   Field{"durationMs", &NowPlaying::durationMs},
                          Field{"title", &NowPlaying::title},           Field{"artist", &NowPlaying::artist},
                          Field{"artworkURL", &NowPlaying::artworkURL}, Field{"source", &NowPlaying::source}};
    }
    bool operator==(const NowPlaying&) const = default;
};

} // namespace lumaro
