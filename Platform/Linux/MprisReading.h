// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/MusicSample.h"

#include <QVariantMap>

#include <cstdint>
#include <optional>
#include <string>

namespace lumaro {

/// What a player says of itself at one moment. Texts are one line of at most 300 characters. A stopped one has no more
/// than its state; so does one that plays nothing that has a name.
struct MprisReading {
    PlaybackState state = PlaybackState::stopped;
    std::string title;
    bool isTitleSaid = false; ///< else the title is the name of the file that the URL leads to
    std::string artist;
    std::string album;
    std::string trackId;
    std::string url;
    std::string trackKey;        ///< made of id, URL, title and artist: some players say one id for all tracks
    std::int64_t lengthUs = 0;   ///< 0 when it is not known
    std::int64_t positionUs = 0; ///< not beyond a length that is known
    std::string artUrl;          ///< of the cover, whole, whatever its scheme; empty when there is none

    /// Reads the properties of org.mpris.MediaPlayer2.Player. A number may be of any type, a text also an object path
    /// and an artist also a list; what is of another type is as if it were missing. None without a state that we know.
    static std::optional<MprisReading> of(const QVariantMap& properties);

    bool operator==(const MprisReading&) const = default;
};

} // namespace lumaro
