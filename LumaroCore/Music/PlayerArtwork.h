// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// The covers that players show themselves. On the main thread.
class PlayerArtwork {
public:
    PlayerArtwork() = default;
    PlayerArtwork(const PlayerArtwork&) = delete;
    PlayerArtwork& operator=(const PlayerArtwork&) = delete;
    virtual ~PlayerArtwork() = default;

    /// The URL of the cover, whatever its scheme, as the player of this source said it for a track that it played
    /// lately; none when it said none.
    virtual std::optional<std::string> artworkOf(MusicSource source, std::string_view trackKey) = 0;
};

} // namespace lumaro
