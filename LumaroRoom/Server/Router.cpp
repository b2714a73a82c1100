// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Router.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lumaro {
namespace {

// A "*" stands for any one component, first the couple or invite, then the media or cover.
struct Pattern {
    std::string_view method;
    std::string_view path;
    Route route;
    std::string_view name;
};

constexpr std::array patterns{
    Pattern{"POST", "/couples", Route::createCouple, "create_couple"},
    Pattern{"POST", "/joins/code", Route::joinByCode, "join_code"},
    Pattern{"POST", "/joins/link", Route::joinByLink, "join_link"},
    Pattern{"POST", "/handoff", Route::handoff, "handoff"},
    Pattern{"POST", "/couples/*/links", Route::mintLink, "mint_link"},
    Pattern{"DELETE", "/couples/*/links", Route::resetLinks, "reset_links"},
    Pattern{"POST", "/couples/*/codes", Route::createCode, "create_code"},
    Pattern{"PUT", "/couples/*/names/self", Route::setName, "set_name"},
    Pattern{"DELETE", "/couples/*/devices/self", Route::leave, "leave"},
    Pattern{"GET", "/couples/*/partner", Route::partner, "partner"},
    Pattern{"DELETE", "/couples/*/partner", Route::releasePartner, "release_partner"},
    Pattern{"GET", "/couples/*/snapshot", Route::snapshot, "snapshot"},
    Pattern{"PUT", "/couples/*/media/*", Route::putMedia, "put_media"},
    Pattern{"GET", "/couples/*/media/*", Route::getMedia, "get_media"},
    Pattern{"PUT", "/couples/*/covers/*", Route::putCover, "put_cover"},
    Pattern{"GET", "/couples/*/covers/*", Route::getCover, "get_cover"},
    Pattern{"GET", "/couples/*/weather", Route::weather, "weather"},
    Pattern{"GET", "/couples/*/window-key", Route::windowKey, "window_key"},
    Pattern{"POST", "/couples/*/calendar/connect", Route::connectCalendar, "connect_calendar"},
    Pattern{"GET", "/couples/*/ws", Route::roomSocket, "socket"},
    Pattern{"GET", "/for/*", Route::invitePage, "invite_page"},
    Pattern{"GET", "/dl/*", Route::inviteDownloadPage, "invite_download_page"},
    Pattern{"GET", "/download", Route::downloadPage, "download_page"},
    Pattern{"GET", "/room", Route::room, "room"},
    Pattern{"GET", "/healthz", Route::health, "health"},
    Pattern{"GET", "/metrics", Route::metrics, "metrics"},
};

std::string_view nextComponent(std::string_view& path) {
    const auto component = path.substr(0, path.find('/'));
    path.remove_prefix(std::min(path.size(), component.size() + 1));
    return component;
}

std::optional<RouteMatch> match(const Pattern& pattern, std::string_view path) {
    if (std::ranges::count(pattern.path, '/') != std::ranges::count(path, '/')) return std::nullopt;
    RouteMatch found{pattern.route, {}, {}};
    for (auto wanted = pattern.path; !wanted.empty();) {
        const auto name = nextComponent(wanted);
        const auto component = nextComponent(path);
        if (name != "*" && name != component) return std::nullopt;
        if (name != "*") continue;
        if (component.empty()) return std::nullopt;
        (found.id.empty() ? found.id : found.media) = component;
    }
    return found;
}

} // namespace

Routing routeOf(std::string_view method, std::string_view path) {
    WrongMethod wrong;
    for (const auto& pattern : patterns) {
        auto found = match(pattern, path);
        if (!found) continue;
        if (pattern.method == method) return *std::move(found);
        wrong.allowed.append(wrong.allowed.empty() ? "" : ", ").append(pattern.method);
    }
    if (wrong.allowed.empty()) return NoSuchPath{};
    return wrong;
}

bool isPairing(Route route) {
    return route <= Route::releasePartner;
}

std::string_view nameOf(Route route) {
    return std::ranges::find(patterns, route, &Pattern::route)->name;
}

} // namespace lumaro
