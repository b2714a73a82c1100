// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/WindowSystemSearch.h"

#include <QtGlobal>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>
#include <wayland-client.h>
#include <xcb/xcb.h>

namespace lumaro {
namespace {

constexpr std::string_view desktopTypeName = "_NET_WM_WINDOW_TYPE_DESKTOP";
// X11's server may be started for the first program that comes, and its window manager a moment after it.
constexpr std::chrono::milliseconds managersTime{2000};
constexpr std::chrono::milliseconds betweenLooks{50};
constexpr std::uint32_t mostHints = 1024;

struct Ending {
    void operator()(wl_display* display) const { wl_display_disconnect(display); }
    void operator()(xcb_connection_t* server) const { xcb_disconnect(server); }
    void operator()(void* reply) const { std::free(reply); }
};
template <class T>
using Ended = std::unique_ptr<T, Ending>;

void lookAtGlobal(void* data, wl_registry* /*registry*/, std::uint32_t /*id*/, const char* interface,
                  std::uint32_t /*version*/) {
    if (std::string_view{interface} == "zwlr_layer_shell_v1") static_cast<WindowSystems*>(data)->hasLayers = true;
}
void ignoreGlobal(void* /*data*/, wl_registry* /*registry*/, std::uint32_t /*id*/) {
}

void askCompositor(WindowSystems& found) {
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) return;
    const Ended<wl_display> display{wl_display_connect(nullptr)};
    if (!display) return;
    static constexpr wl_registry_listener listener{lookAtGlobal, ignoreGlobal};
    auto* const registry = wl_display_get_registry(display.get());
    wl_registry_add_listener(registry, &listener, &found);
    found.hasCompositor = wl_display_roundtrip(display.get()) >= 0;
    wl_registry_destroy(registry);
}

xcb_atom_t atomOf(xcb_connection_t* server, std::string_view name) {
    const auto asked = xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data());
    const Ended<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(server, asked, nullptr)};
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The hints that the window manager knows; none while there is none.
std::optional<std::vector<xcb_atom_t>> hintsOf(xcb_connection_t* server, xcb_window_t root, xcb_atom_t supported) {
    const auto asked = xcb_get_property(server, 0, root, supported, XCB_ATOM_ATOM, 0, mostHints);
    const Ended<xcb_get_property_reply_t> reply{xcb_get_property_reply(server, asked, nullptr)};
    if (!reply || reply->type != XCB_ATOM_ATOM || reply->format != 32) return std::nullopt;
    const auto* const first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    const auto count = xcb_get_property_value_length(reply.get()) / static_cast<int>(sizeof(xcb_atom_t));
    return std::vector<xcb_atom_t>{first, first + count};
}

void askServer(WindowSystems& found) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) return;
    int screen = 0;
    const Ended<xcb_connection_t> server{xcb_connect(nullptr, &screen)};
    if (xcb_connection_has_error(server.get()) != 0) return;
    found.hasXServer = true;
    if (!found.hasCompositor) return;
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(server.get())).data->root;
    const auto supported = atomOf(server.get(), "_NET_SUPPORTED");
    const auto wanted = atomOf(server.get(), desktopTypeName);
    const auto end = std::chrono::steady_clock::now() + managersTime;
    auto hints = hintsOf(server.get(), root, supported);
    while (!hints && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(betweenLooks);
        hints = hintsOf(server.get(), root, supported);
    }
    found.hasDesktopType = hints && std::ranges::find(*hints, wanted) != hints->end();
}

} // namespace

WindowSystems findWindowSystems() {
    WindowSystems found{.isChosen = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")};
    if (found.isChosen) return found;
    askCompositor(found);
    // Where there are layers, X11 is for the others; a server is not started for a question.
    if (!found.hasLayers) askServer(found);
    return found;
}

} // namespace lumaro
