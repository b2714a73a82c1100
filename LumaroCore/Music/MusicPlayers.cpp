// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/MusicPlayers.h"

#include <utility>

namespace lumaro {

std::string_view bundleIdentifier(MusicSource source) {
    switch (source) {
    case MusicSource::spotify: return "com.spotify.client";
    case MusicSource::appleMusic: return "com.apple.Music";
    }
    std::unreachable();
}

std::string_view changeNotification(MusicSource source) {
    switch (source) {
    case MusicSource::spotify: return "com.spotify.client.PlaybackStateChanged";
    case MusicSource::appleMusic: return "com.apple.Music.playerInfo";
    }
    std::unreachable();
}

} // namespace lumaro
