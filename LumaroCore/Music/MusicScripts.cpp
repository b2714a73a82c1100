// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Music/MusicScripts.h"

#include <utility>

namespace lumaro {

std::string_view MusicScripts::source(MusicSource source) {
    switch (source) {
    case MusicSource::spotify: return spotify();
    case MusicSource::appleMusic: return appleMusic();
    }
    std::unreachable();
}

std::string_view MusicScripts::spotify() {
    return R"(tell application id "com.spotify.client"
    set stateText to (player state as text)
    if stateText is "stopped" then return {stateText}
    set activeTrack to current track
    return {stateText, name of activeTrack, artist of activeTrack, album of activeTrack, spotify url of activeTrack, duration of activeTrack, player position}
end tell)";
}

std::string_view MusicScripts::appleMusic() {
    return R"(tell application id "com.apple.Music"
    set stateText to (player state as text)
    if stateText is "stopped" then return {stateText}
    set activeTrack to current track
    return {stateText, name of activeTrack, artist of activeTrack, album of activeTrack, persistent ID of activeTrack, duration of activeTrack, player position}
end tell)";
}

} // namespace lumaro
