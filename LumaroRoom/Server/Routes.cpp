// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Routes.h"

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Pairing/RoomCheck.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Pairing/Secrets.h"
#include "LumaroRoom/Server/Pages.h"
#include "LumaroRoom/Server/RouteAnswers.h"

#include <utility>
#include <variant>

namespace lumaro {
namespace {

ServerResponse unavailable() {
    return errorResponse(503, "unavailable", "the board's store does not answer");
}

ServerResponse textResponse(std::string text) {
    return {200, {{"content-type", "text/plain; version=0.0.4"}, {"cache-control", "no-store"}}, std::move(text)};
}

constexpr PartnerID otherOf(PartnerID slot) {
    return slot == PartnerID::a ? PartnerID::b : PartnerID::a;
}

ServerResponse roomCard() {
    auto text = Wire::encode(RoomCard{std::string{RoomCard::ours}, RoomCard::version});
    return text ? jsonResponse(200, std::move(*text)) : unavailable();
}

} // namespace

std::size_t Routes::maxBody(std::string_view method, std::string_view path) const {
    const auto routing = routeOf(method, path);
    const auto* const match = std::get_if<RouteMatch>(&routing);
    if (match != nullptr && match->route == Route::putMedia) return limits_.maxMediaBytes;
    if (match != nullptr && match->route == Route::putCover) return limits_.maxCoverBytes;
    return limits_.maxBodyBytes;
}

void Routes::admit(const ServerRequest& request, std::move_only_function<void(std::optional<ServerResponse>)> then) {
    auto routing = routeOf(request.method, request.path);
    auto* const match = std::get_if<RouteMatch>(&routing);
    if (match == nullptr) return then(std::nullopt); // said once the body is there
    byDevice(
        {std::move(*match), request}, [](Store&, const DeviceRecord&) { return Outcome{}; },
        [then = std::move(then)](ServerResponse response) mutable {
            constexpr int ok = 200;
            then(response.status == ok ? std::nullopt : std::optional{std::move(response)});
        });
}

void Routes::handle(ServerRequest request, Respond respond) {
    auto routing = routeOf(request.method, request.path);
    std::visit(Overloaded{
                   [&](RouteMatch& match) {
                       auto noted = [this, route = match.route, respond = std::move(respond)](auto response) mutable {
                           note(route, response.status);
                           respond(std::move(response));
                       };
                       answer({std::move(match), std::move(request)}, std::move(noted));
                   },
                   [&](NoSuchPath) { respond(errorResponse(404, "not_found", "there is nothing at this path")); },
                   [&](const WrongMethod& wrong) {
                       auto response = errorResponse(405, "method_not_allowed", "this path has no such method");
                       response.headers.push_back({"allow", wrong.allowed});
                       respond(std::move(response));
                   },
               },
               routing);
}

// The route and never the path, which names couples and invites.
void Routes::note(Route route, int status) {
    std::string line = "route=";
    line.append(nameOf(route)).append(" status=").append(std::to_string(status));
    ports_.log.write(isPairing(route) ? LogLevel::info : LogLevel::debug, "http", line);
}

void Routes::answer(Call call, Respond respond) {
    switch (call.match.route) {
    case Route::createCouple:
    case Route::joinByCode:
    case Route::joinByLink:
    case Route::handoff:
    case Route::mintLink:
    case Route::resetLinks:
    case Route::createCode:
    case Route::setName:
    case Route::leave:
    case Route::releasePartner: return answerPairing(call, std::move(respond));
    case Route::partner: return partner(call, std::move(respond));
    case Route::snapshot: return snapshot(call, std::move(respond));
    case Route::putMedia: return putMedia(std::move(call), std::move(respond));
    case Route::getMedia: return getMedia(call, std::move(respond));
    case Route::putCover: return putCover(std::move(call), std::move(respond));
    case Route::getCover: return getCover(call, std::move(respond));
    case Route::weather: return weather(call, std::move(respond));
    case Route::windowKey: return windowKey(call, std::move(respond));
    case Route::connectCalendar: return notConfigured(call, std::move(respond));
    case Route::roomSocket:
        return respond(errorResponse(426, "upgrade_required", "this path takes a WebSocket upgrade"));
    case Route::invitePage: return invitePage(call, std::move(respond));
    case Route::inviteDownloadPage: return respond(downloadPage(call.match.id, ports_.pairing.publicURL()));
    case Route::downloadPage: return respond(downloadPage({}, ports_.pairing.publicURL()));
    case Route::room: return respond(roomCard());
    case Route::health: return health(std::move(respond));
    case Route::metrics:
        return ports_.neighbours.metrics(
            [respond = std::move(respond)](std::string text) mutable { respond(textResponse(std::move(text))); });
    }
}

void Routes::inStore(Work work, Respond respond) {
    const auto outcome = std::make_shared<Outcome>();
    ports_.store.submit(
        [work = std::move(work), outcome](Store& store) mutable -> StoreResult<void> {
            auto result = work(store);
            if (!result) return std::unexpected(std::move(result.error()));
            *outcome = std::move(*result);
            return {};
        },
        [this, outcome, respond = std::move(respond)](const StoreResult<void>& done) mutable {
            if (!done) {
                ports_.log.write(LogLevel::error, "http", "the store failed: " + done.error().message);
                return respond(unavailable());
            }
            if (!outcome->changedCouple.empty()) ports_.neighbours.refreshMembers(outcome->changedCouple);
            respond(std::move(outcome->response));
        });
}

void Routes::byDevice(const Call& call, DeviceWork work, Respond respond) {
    inStore(
        [coupleId = call.match.id, token = sha256(call.request.token),
         work = std::move(work)](Store& store) mutable -> StoreResult<Outcome> {
            const auto members = store.members(coupleId);
            if (!members) return std::unexpected(members.error());
            const auto* const device = members->findToken(token);
            if (device == nullptr) return Outcome{unauthorizedResponse(), {}};
            return work(store, *device);
        },
        std::move(respond));
}

void Routes::notConfigured(const Call& call, Respond respond) {
    byDevice(
        call,
        [](Store&, const DeviceRecord&) {
            return Outcome{errorResponse(404, "not_configured", "this server does not offer that"), {}};
        },
        std::move(respond));
}

void Routes::health(Respond respond) {
    inStore(
        [](Store& store) -> StoreResult<Outcome> {
            // It answers, whatever it says.
            if (auto answer = store.couple(""); !answer) return std::unexpected(std::move(answer.error()));
            return Outcome{jsonResponse(200, R"({"status":"ok"})"), {}};
        },
        std::move(respond));
}

void Routes::snapshot(const Call& call, Respond respond) {
    byDevice(
        call,
        [coupleId = call.match.id](Store& store, const DeviceRecord&) -> StoreResult<Outcome> {
            auto room = store.loadRoom(coupleId);
            if (!room) return std::unexpected(std::move(room.error()));
            if (!*room) return Outcome{unauthorizedResponse(), {}};
            auto text = Wire::encode((*room)->board);
            if (!text) return std::unexpected(StoreError{"the stored board cannot be written"});
            return Outcome{jsonResponse(200, std::move(*text)), {}};
        },
        std::move(respond));
}

void Routes::partner(const Call& call, Respond respond) {
    struct Found {
        PartnerID slot = PartnerID::a;
        PartnerAnswer answer;
    };
    const auto found = std::make_shared<Found>();
    auto say = [this, coupleId = call.match.id, found, respond = std::move(respond)](ServerResponse response) mutable {
        constexpr int ok = 200;
        if (response.status != ok) return respond(std::move(response));
        ports_.neighbours.online(coupleId, [found, respond = std::move(respond)](PartnerSet online) mutable {
            found->answer.online = online.contains(found->slot);
            auto text = Wire::encode(found->answer);
            respond(text ? jsonResponse(ok, std::move(*text)) : unavailable());
        });
    };
    byDevice(
        call,
        [coupleId = call.match.id, found](Store& store, const DeviceRecord& by) -> StoreResult<Outcome> {
            const auto members = store.members(coupleId);
            if (!members) return std::unexpected(members.error());
            const auto seen = store.lastSeen(coupleId);
            if (!seen) return std::unexpected(seen.error());
            found->slot = otherOf(by.slot);
            found->answer.name = members->names.of(found->slot);
            found->answer.lastSeen = seen->of(found->slot);
            return Outcome{};
        },
        std::move(say));
}

void Routes::weather(const Call& call, Respond respond) {
    const auto latitude = queryValue(call.request.query, "lat");
    const auto longitude = queryValue(call.request.query, "lon");
    const auto position = latitude && longitude ? positionIn(*latitude, *longitude) : std::nullopt;
    auto ask = [this, position, respond = std::move(respond)](ServerResponse response) mutable {
        constexpr int ok = 200;
        if (response.status != ok) return respond(std::move(response));
        if (!position) return respond(errorResponse(400, "bad_request", "lat and lon name no place on earth"));
        ports_.neighbours.weather(*position, [respond = std::move(respond)](const auto& weather) mutable {
            const auto text = weather ? Wire::encode(*weather) : std::unexpected(EncodeError{});
            respond(text ? jsonResponse(ok, *text)
                         : errorResponse(502, "weather_unavailable", "the forecast service did not answer"));
        });
    };
    byDevice(call, [](Store&, const DeviceRecord&) { return Outcome{}; }, std::move(ask));
}

void Routes::windowKey(const Call& call, Respond respond) {
    if (!windowKey_) return notConfigured(call, std::move(respond));
    byDevice(
        call,
        [&key = *windowKey_](Store&, const DeviceRecord&) {
            const auto text = Wire::encode(key);
            return Outcome{text ? jsonResponse(200, *text) : unavailable(), {}};
        },
        std::move(respond));
}

void Routes::invitePage(const Call& call, Respond respond) {
    inStore(
        [inviteId = call.match.id, serverURL = ports_.pairing.publicURL(),
         now = ports_.clock.now()](Store& store) -> StoreResult<Outcome> {
            const auto link = store.link(inviteId);
            if (!link) return std::unexpected(link.error());
            if (!*link || (*link)->isReplaced || (*link)->expiresAt <= now) return Outcome{goneInvitePage(), {}};
            const auto members = store.members((*link)->coupleId);
            if (!members) return std::unexpected(members.error());
            return Outcome{lumaro::invitePage(inviteId, serverURL, members->names.of((*link)->inviter)), {}};
        },
        std::move(respond));
}

} // namespace lumaro
