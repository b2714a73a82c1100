// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/Wallpaper.h"

namespace lumaro {

// The wallpapers of desktops that keep them in GSettings. As `WallpaperDoor` has it.

bool hasSettings(WallpaperDesk desk);
[[nodiscard]] std::expected<WallpaperSettings, std::string> readSettings(WallpaperDesk desk);
[[nodiscard]] std::expected<void, std::string> writeSettings(WallpaperDesk desk, const WallpaperSettings& settings);

} // namespace lumaro
