// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Services/LoginItem.h"
#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/Log.h"

#include <utility>

namespace lumaro {

/// The board on the desktop, as far as the application steers it.
class WallpaperController {
public:
    WallpaperController() = default;
    WallpaperController(const WallpaperController&) = delete;
    WallpaperController& operator=(const WallpaperController&) = delete;
    virtual ~WallpaperController() = default;

    virtual void setEnabled(bool enabled) = 0;
};

struct DesktopState {
    bool showsBoardOnDesktop = true;
};

/// Whether the board is shown on the desktop of this computer.
class DesktopSwitch {
public:
    /// All outlive the switch.
    DesktopSwitch(UserDefaults& defaults, WallpaperController& wallpaper, DesktopState& state, Announcer& announcer)
        : defaults_(defaults), wallpaper_(wallpaper), state_(state), announcer_(announcer) {
        state_.showsBoardOnDesktop = defaults_.boolean("showsBoardOnDesktop").value_or(true);
    }

    void start() { wallpaper_.setEnabled(state_.showsBoardOnDesktop); }
    void stop() { wallpaper_.setEnabled(false); }
    void set(bool shows) {
        state_.showsBoardOnDesktop = shows;
        defaults_.setBoolean("showsBoardOnDesktop", shows);
        wallpaper_.setEnabled(shows);
        announcer_.changed(AppChange::desktop);
    }

private:
    UserDefaults& defaults_;
    WallpaperController& wallpaper_;
    DesktopState& state_;
    Announcer& announcer_;
};

/// Has the program opened when the person logs in: tried once for an installation, and not again when that failed.
void offerLaunchAtLogin(UserDefaults& defaults, LoginItem& loginItem, Log& log);

} // namespace lumaro
