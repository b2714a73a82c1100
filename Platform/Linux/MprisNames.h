// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <QString>

#include <map>

/// Which of the names on a bus are music players, and of which source.
namespace lumaro::MprisNames {

/// The name that the names of all players are below.
inline constexpr auto root = u"org.mpris.MediaPlayer2";

bool isPlayer(const QString& name);

/// Each player's name with the connection that owns it.
using Owners = std::map<QString, QString>;

/// The players that count, by their connections: one with two names is one player. Left out are what only passes on
/// other players, browsers unless they are included, and browsers that Plasma's browser integration doubles.
std::map<QString, MusicSource> players(const Owners& owners, bool includesBrowsers);

} // namespace lumaro::MprisNames
