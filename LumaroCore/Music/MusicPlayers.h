// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/PlayerArtwork.h"
#include "LumaroCore/Music/PlayerNotifications.h"
#include "LumaroCore/Music/RunningPlayers.h"
#include "LumaroCore/Music/ScriptRunner.h"

#include <array>
#include <string_view>

namespace lumaro {

/// In the order in which the players are asked; of two that are paused the first one counts.
inline constexpr std::array musicSources{MusicSource::spotify, MusicSource::appleMusic};

/// The name under which the system knows the player as an application.
std::string_view bundleIdentifier(MusicSource source);
/// What the player broadcasts when something about its music changes.
std::string_view changeNotification(MusicSource source);

/// The players of this computer: what they are asked, whether they run, what they tell and show. All outlive whoever
/// uses them.
struct MusicPlayers {
    ScriptRunner& scripts;
    RunningPlayers& running;
    PlayerNotifications& notifications;
    PlayerArtwork& artwork;
};

} // namespace lumaro
