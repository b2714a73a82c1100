// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <string_view>

namespace lumaro::MusicScripts {

/// The AppleScript that reads a player: {state} when it is stopped, else {state, title, artist, album, track key,
/// duration, position}.
std::string_view source(MusicSource source);
std::string_view spotify();
std::string_view appleMusic();

} // namespace lumaro::MusicScripts
