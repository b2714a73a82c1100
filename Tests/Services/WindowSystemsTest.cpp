// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Services/WindowSystems.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

TEST(WindowSystemsTest, TheOneIsTakenOnWhichTheBoardHangsBehindTheIcons) {
    struct Case {
        const char* desktop;
        WindowSystems found;
        std::optional<std::string_view> taken;
    };
    const WindowSystems sway{.hasCompositor = true, .hasLayers = true, .hasXServer = true};
    auto plasma = sway;
    plasma.hasDesktopType = true;
    const WindowSystems gnome{.hasCompositor = true, .hasXServer = true, .hasDesktopType = true};
    auto named = gnome;
    named.isChosen = true;
    for (const auto& [desktop, found, taken] : {
             Case{"X11", {.hasXServer = true, .hasDesktopType = true}, "xcb"},
             Case{"X11, whose window manager is yet to come", {.hasXServer = true}, "xcb"},
             Case{"sway", sway, "wayland;xcb"},
             Case{"Plasma", plasma, "wayland;xcb"},
             Case{"GNOME", gnome, "xcb;wayland"},
             Case{"a compositor that has neither", {.hasCompositor = true, .hasXServer = true}, "wayland;xcb"},
             Case{"one without X11", {.hasCompositor = true}, "wayland;xcb"},
             Case{"named by the person", named, std::nullopt},
             Case{"no display", {}, std::nullopt},
         }) {
        EXPECT_EQ(windowSystemFor(found), taken) << desktop;
    }
}

} // namespace
} // namespace lumaro
