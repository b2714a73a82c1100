// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/Wallpaper.h"

namespace lumaro {

/// The desktop's own door to its wallpaper. Blocks for three seconds at most; used from one thread at a time,
/// whichever.
class WallpaperDoor {
public:
    WallpaperDoor() = default;
    WallpaperDoor(const WallpaperDoor&) = delete;
    WallpaperDoor& operator=(const WallpaperDoor&) = delete;
    virtual ~WallpaperDoor() = default;

    /// Whether this desktop's door is there on this computer.
    virtual bool isThere(WallpaperDesk desk) = 0;
    /// All that is set about the wallpaper, at most `mostWallpaperSettings`. Errors are for the log.
    [[nodiscard]] virtual std::expected<WallpaperSettings, std::string> read(WallpaperDesk desk) = 0;
    /// Sets those, and nothing else; none takes the desktop's default back. They are durable afterwards, as far as the
    /// desktop's own are. After an error some may be set.
    [[nodiscard]] virtual std::expected<void, std::string> write(WallpaperDesk desk,
                                                                 const WallpaperSettings& settings) = 0;
};

} // namespace lumaro
