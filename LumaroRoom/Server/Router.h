// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace lumaro {

/// Everything that can be asked of the server over HTTP.
enum class Route : std::uint8_t {
    // of the pairing service
    createCouple,
    joinByCode,
    joinByLink,
    handoff,
    mintLink,
    resetLinks,
    createCode,
    setName,
    leave,
    releasePartner,
    // of the board
    partner,
    snapshot,
    putMedia,
    getMedia,
    putCover,
    getCover,
    weather,
    windowKey,
    connectCalendar,
    roomSocket,
    // of anybody, browsers and operators
    invitePage,
    inviteDownloadPage,
    downloadPage,
    room,
    health,
    metrics,
};

struct RouteMatch {
    Route route;
    std::string id;    ///< the couple's or the invite's, in the path; empty when there is none
    std::string media; ///< the media's or the cover's, likewise

    bool operator==(const RouteMatch&) const = default;
};

struct NoSuchPath {
    bool operator==(const NoSuchPath&) const = default;
};
/// The path is there, under other methods.
struct WrongMethod {
    std::string allowed; ///< as "Allow" has it

    bool operator==(const WrongMethod&) const = default;
};

using Routing = std::variant<RouteMatch, NoSuchPath, WrongMethod>;

/// What a request asks for.
Routing routeOf(std::string_view method, std::string_view path);

/// Whether the route changes who is on a board, and how people get there.
bool isPairing(Route route);

/// The route's name for logs and metrics: what stands in a path is nobody's business there.
std::string_view nameOf(Route route);

} // namespace lumaro
