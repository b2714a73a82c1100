// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <array>
#include <string_view>

namespace lumaro {

/// In the order in which the players are asked; of two that are paused the first one counts.
inline constexpr std::array musicSources{MusicSource::spotify, MusicSource::appleMusic};

/// The name under which the system knows the player as an application.
std::string_view bundleIdentifier(MusicSource source);
/// What the player broadcasts when something about its music changes.
std::string_view changeNotification(MusicSource source);

} // namespace lumaro
