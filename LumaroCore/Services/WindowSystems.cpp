// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Services/WindowSystems.h"

namespace lumaro {

std::optional<std::string_view> windowSystemFor(const WindowSystems& found) {
    if (found.isChosen) return std::nullopt;
    if (!found.hasCompositor) return found.hasXServer ? std::optional{std::string_view{"xcb"}} : std::nullopt;
    // A compositor without layers may still know windows that are the desktop, of X11's programs alone.
    if (!found.hasLayers && found.hasDesktopType) return "xcb;wayland";
    return "wayland;xcb";
}

} // namespace lumaro
