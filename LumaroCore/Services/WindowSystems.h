// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

namespace lumaro {

/// What a look around finds of the window systems that answer, before there is a window. Plain values.
struct WindowSystems {
    bool isChosen = false;       ///< the person named the one to use in the environment
    bool hasCompositor = false;  ///< a Wayland compositor answers
    bool hasLayers = false;      ///< it lets a program hang a surface below all windows
    bool hasXServer = false;     ///< of its own, or the compositor's
    bool hasDesktopType = false; ///< whose window manager knows windows that are the desktop

    bool operator==(const WindowSystems&) const = default;
};

/// Which window systems are tried, in this order, so that the board can hang behind the icons and nowhere covers
/// windows: names as the toolkit has them, separated by semicolons. None leaves it to the toolkit.
std::optional<std::string_view> windowSystemFor(const WindowSystems& found);

} // namespace lumaro
