// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/MusicSample.h"
#include "LumaroCore/Music/ScriptValue.h"

#include <optional>

namespace lumaro::MusicSampleParser {

/// Reads what a player's script answered: a list of the state, and of title, artist, album, track key, duration and
/// position unless it is stopped. A playing player whose list is shorter counts as stopped; what is no such list gives
/// no sample. The position is in seconds.
std::optional<MusicSample> parse(const ScriptValue& value, MusicSource source);

/// A duration as the player reports it, spotify in milliseconds and appleMusic in seconds, cut to whole milliseconds.
/// 0, which means unknown, for a number that is infinite, none, or beyond what a clock could count.
std::int64_t durationMs(double reported, MusicSource source);

} // namespace lumaro::MusicSampleParser
