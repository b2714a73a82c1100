// SPDX-License-Identifier: Apache-2.0
// What people's window managers agree on: the Extended Window Manager Hints. On another platform of Qt nothing is done.
#include "LumaroCore/DesktopKit/NativeDesktop.h"

#include <QGuiApplication>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>
#include <xcb/shape.h>
#include <xcb/xcb.h>

namespace lumaro {
namespace {

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

// Without one that knows the hints, a window of the desktop would be an ordinary one.
bool hasWindowManager(xcb_connection_t* to) {
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(to)).data->root;
    const auto asked = xcb_get_property(to, 0, root, atom(to, "_NET_SUPPORTING_WM_CHECK"), XCB_ATOM_WINDOW, 0, 1);
    const Owned<xcb_get_property_reply_t> reply{xcb_get_property_reply(to, asked, nullptr)};
    return reply && reply->type == XCB_ATOM_WINDOW;
}

} // namespace

bool becomeDesktop(QWindow& window) {
    auto* const to = connection();
    if (to == nullptr || !hasWindowManager(to)) return false;
    const auto id = idOf(window);
    set(to, id, "_NET_WM_WINDOW_TYPE", XCB_ATOM_ATOM, std::array{atom(to, "_NET_WM_WINDOW_TYPE_DESKTOP")});
    set(to, id, "_NET_WM_STATE", XCB_ATOM_ATOM,
        std::array{atom(to, "_NET_WM_STATE_BELOW"), atom(to, "_NET_WM_STATE_STICKY"),
                   atom(to, "_NET_WM_STATE_SKIP_TASKBAR"), atom(to, "_NET_WM_STATE_SKIP_PAGER")});
    set(to, id, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, std::array{everyWorkspace});
    xcb_flush(to);
    return true;
}

bool letClicksThrough(QWindow& window, bool isClickThrough) {
    auto* const to = connection();
    if (to == nullptr) return false;
    if (isClickThrough) {
        xcb_shape_rectangles(to, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, idOf(window), 0, 0,
                             0, nullptr);
    } else {
        xcb_shape_mask(to, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, idOf(window), 0, 0, XCB_NONE);
    }
    xcb_flush(to);
    return true;
}

bool askForVisibility(QWindow& window) {
    auto* const to = connection();
    if (to == nullptr) return false;
    const auto id = idOf(window);
    const auto asked = xcb_get_window_attributes(to, id);
    const Owned<xcb_get_window_attributes_reply_t> reply{xcb_get_window_attributes_reply(to, asked, nullptr)};
    if (!reply) return false;
    const std::uint32_t events = reply->your_event_mask | XCB_EVENT_MASK_VISIBILITY_CHANGE;
    xcb_change_window_attributes(to, id, XCB_CW_EVENT_MASK, &events);
    xcb_flush(to);
    return true;
}

std::optional<bool> coverageIn(const QByteArray& eventType, const void* event, WId window) {
    if (eventType != "xcb_generic_event_t") return std::nullopt;
    constexpr std::uint8_t sentByOthers = 0x80;
    const auto* const any = static_cast<const xcb_generic_event_t*>(event);
    if ((any->response_type & ~sentByOthers) != XCB_VISIBILITY_NOTIFY) return std::nullopt;
    const auto* const visibility = static_cast<const xcb_visibility_notify_event_t*>(event);
    if (visibility->window != window) return std::nullopt;
    return visibility->state == XCB_VISIBILITY_FULLY_OBSCURED;
}

} // namespace lumaro
