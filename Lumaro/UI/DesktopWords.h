// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Computer/BoardWallpaper.h"
#include "LumaroCore/DesktopKit/DesktopLevel.h"

#include <QtCore/QString>

namespace lumaro {

// What the settings say of where the board hangs, a sentence each.

/// `iconProgram` is the one whose icons are in the way, empty when it has no name.
QString hangingWords(DesktopLevel level, const QString& iconProgram, bool isPictureOffered);
QString hangingAsPictureWords();
/// Beside the switch that makes the board the wallpaper.
QString pictureWords(BoardWallpaper::State state, DesktopLevel level);

} // namespace lumaro
