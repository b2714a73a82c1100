// SPDX-License-Identifier: Apache-2.0
// What people's window managers agree on: the Extended Window Manager Hints. On another platform of Qt nothing is done.
#include "LumaroCore/DesktopKit/X11Desktop.h"

#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace lumaro::x11 {
namespace {

constexpr std::string_view desktopType = "_NET_WM_WINDOW_TYPE_DESKTOP";
// Our own windows on anybody's desktop bear it: another profile's board is no program with icons.
constexpr std::string_view ownMark = "_LUMARO_BOARD";
// More than anybody has open. Those past it are not looked at.
constexpr std::size_t mostWindows = 512;
constexpr std::size_t longestName = 40;
constexpr std::uint8_t sentByOthers = 0x80; // in the type of an event
constexpr std::uint32_t everyWorkspace = 0xFFFFFFFF;

struct Freeing {
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Freeing>;

xcb_connection_t* connection() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

xcb_window_t idOf(QWindow& window) {
    return static_cast<xcb_window_t>(window.winId());
}

xcb_atom_t atom(xcb_connection_t* to, std::string_view name) {
    const auto asked = xcb_intern_atom(to, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(to, asked, nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void set(xcb_connection_t* to, xcb_window_t window, std::string_view property, xcb_atom_t type,
         std::span<const std::uint32_t> values) {
    xcb_change_property(to, XCB_PROP_MODE_REPLACE, window, atom(to, property), type, 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

xcb_window_t rootOf(xcb_connection_t* to) {
    return xcb_setup_roots_iterator(xcb_get_setup(to)).data->root;
}

// Another program's windows may be gone by the time they are asked about: then there is nothing.
std::vector<std::uint32_t> numbersOf(xcb_connection_t* to, xcb_window_t window, std::string_view property) {
    const auto asked = xcb_get_property(to, 0, window, atom(to, property), XCB_ATOM_ANY, 0, mostWindows);
    const Owned<xcb_get_property_reply_t> reply{xcb_get_property_reply(to, asked, nullptr)};
    if (!reply || reply->format != 32) return {};
    const auto* const first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / static_cast<int>(sizeof(std::uint32_t))};
}

// "instance\0class\0", by whoever made the window.
std::string programOf(xcb_connection_t* to, xcb_window_t window) {
    const auto asked = xcb_get_property(to, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longestName);
    const Owned<xcb_get_property_reply_t> reply{xcb_get_property_reply(to, asked, nullptr)};
    if (!reply || reply->format != 8) return {};
    const std::string_view both{static_cast<const char*>(xcb_get_property_value(reply.get())),
                                static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    std::string name{both.substr(0, std::min(both.find('\0'), longestName))};
    std::ranges::replace_if(name, [](unsigned char letter) { return letter < ' ' || letter > '~'; }, '?');
    return name;
}

bool hasCompositor(xcb_connection_t* to) {
    const auto asked = xcb_get_selection_owner(to, atom(to, "_NET_WM_CM_S0"));
    const Owned<xcb_get_selection_owner_reply_t> reply{xcb_get_selection_owner_reply(to, asked, nullptr)};
    return reply && reply->owner != XCB_NONE;
}

bool isDesktop(xcb_connection_t* to, xcb_window_t window) {
    const auto types = numbersOf(to, window, "_NET_WM_WINDOW_TYPE");
    // The first one that a window manager knows counts.
    return !types.empty() && types.front() == atom(to, desktopType) && numbersOf(to, window, ownMark).empty();
}

std::optional<OtherDesktop> desktopIn(xcb_connection_t* to, xcb_window_t window, bool isComposited) {
    const auto asked = xcb_get_geometry(to, window);
    const Owned<xcb_get_geometry_reply_t> shape{xcb_get_geometry_reply(to, asked, nullptr)};
    if (!shape) return std::nullopt;
    const auto where = xcb_translate_coordinates(to, window, rootOf(to), 0, 0);
    const Owned<xcb_translate_coordinates_reply_t> corner{xcb_translate_coordinates_reply(to, where, nullptr)};
    if (!corner) return std::nullopt;
    constexpr std::uint8_t withAlpha = 32;
    return OtherDesktop{.place = {corner->dst_x, corner->dst_y, shape->width, shape->height},
                        .isSeeThrough = isComposited && shape->depth == withAlpha,
                        .program = programOf(to, window)};
}

// Beside the events that Qt asks for.
bool askFor(xcb_connection_t* to, xcb_window_t window, std::uint32_t events) {
    const auto asked = xcb_get_window_attributes(to, window);
    const Owned<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(to, asked, nullptr)};
    if (!reply) return false;
    const std::uint32_t all = reply->your_event_mask | events;
    xcb_change_window_attributes(to, window, XCB_CW_EVENT_MASK, &all);
    xcb_flush(to);
    return true;
}

// Plasma's own desktop, with its icons, is nowhere among X11's windows then.
bool isPlasmaOnWayland() {
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && qgetenv("XDG_CURRENT_DESKTOP").contains("KDE");
}

} // namespace

bool isHere() {
    return connection() != nullptr;
}

DesktopLevel lowestLevel() {
    auto* const to = connection();
    const auto known = numbersOf(to, rootOf(to), "_NET_SUPPORTED");
    if (std::ranges::find(known, atom(to, desktopType)) == known.end()) return DesktopLevel::refused;
    return isPlasmaOnWayland() ? DesktopLevel::iconsInTheWay : DesktopLevel::behindIcons;
}

bool becomeDesktop(QWindow& window) {
    auto* const to = connection();
    if (lowestLevel() != DesktopLevel::behindIcons) return false;
    const auto id = idOf(window);
    set(to, id, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, std::array{atom(to, "_NET_WM_WINDOW_TYPE_DESKTOP")});
    set(to, id, "_NET_WM_STATE", XCB_ATOM_ATOM,
        std::array{atom(to, "_NET_WM_STATE_BELOW"), atom(to, "_NET_WM_STATE_STICKY"),
                   atom(to, "_NET_WM_STATE_SKIP_TASKBAR"), atom(to, "_NET_WM_STATE_SKIP_PAGER")});
    set(to, id, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, std::array{everyWorkspace});
    set(to, id, ownMark, XCB_ATOM_CARDINAL, std::array{std::uint32_t{1}});
    xcb_flush(to);
    return true;
}

void lowerDesktop(QWindow& window) {
    auto* const to = connection();
    constexpr std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(to, idOf(window), XCB_CONFIG_WINDOW_STACK_MODE, &below);
    xcb_flush(to);
}

void letClicksThrough(QWindow& window, bool isClickThrough) {
    auto* const to = connection();
    if (isClickThrough) {
        xcb_shape_rectangles(to, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, idOf(window), 0, 0,
                             0, nullptr);
    } else {
        xcb_shape_mask(to, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, idOf(window), 0, 0, XCB_NONE);
    }
    xcb_flush(to);
}

bool askForVisibility(QWindow& window) {
    return askFor(connection(), idOf(window), XCB_EVENT_MASK_VISIBILITY_CHANGE);
}

std::optional<bool> coverageIn(const void* event, WId window) {
    const auto* const any = static_cast<const xcb_generic_event_t*>(event);
    if ((any->response_type & ~sentByOthers) != XCB_VISIBILITY_NOTIFY) return std::nullopt;
    const auto* const visibility = static_cast<const xcb_visibility_notify_event_t*>(event);
    if (visibility->window != window) return std::nullopt;
    return visibility->state == XCB_VISIBILITY_FULLY_OBSCURED;
}

std::vector<OtherDesktop> otherDesktops() {
    auto* const to = connection();
    const bool isComposited = hasCompositor(to);
    std::vector<OtherDesktop> found;
    for (const auto window : numbersOf(to, rootOf(to), "_NET_CLIENT_LIST")) {
        if (!isDesktop(to, window)) continue;
        if (auto desktop = desktopIn(to, window, isComposited)) found.push_back(std::move(*desktop));
    }
    return found;
}

bool askForOtherDesktops() {
    return askFor(connection(), rootOf(connection()), XCB_EVENT_MASK_PROPERTY_CHANGE);
}

bool isOfOtherDesktops(const void* event) {
    const auto* const any = static_cast<const xcb_generic_event_t*>(event);
    if ((any->response_type & ~sentByOthers) != XCB_PROPERTY_NOTIFY) return false;
    const auto* const changed = static_cast<const xcb_property_notify_event_t*>(event);
    auto* const to = connection();
    if (changed->window != rootOf(to)) return false;
    static const std::array lists{atom(to, "_NET_CLIENT_LIST"), atom(to, "_NET_SUPPORTED")};
    return std::ranges::find(lists, changed->atom) != lists.end();
}

} // namespace lumaro::x11
