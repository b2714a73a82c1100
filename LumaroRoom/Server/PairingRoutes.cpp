// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Server/Routes.h"

#include <utility>

namespace lumaro {
namespace {

constexpr int statusOk = 200;
constexpr int statusCreated = 201;

ServerResponse unreadable() {
    return errorResponse(400, "bad_request", "the body of this request cannot be read");
}

template <class Body>
PairingService::Person personOf(const Body& body) {
    PairingService::Person person{body.deviceId, body.name, std::nullopt};
    if constexpr (requires { body.slot; }) person.slot = body.slot;
    return person;
}

} // namespace

template <class T>
StoreResult<Routes::Outcome> Routes::outcomeOf(PairingResult<T> result, int status, std::string_view coupleId) {
    if (!result) return std::unexpected(std::move(result.error()));
    if (!*result) {
        auto& refusal = result->error();
        return Outcome{errorResponse(refusal.status, ServerError{.code = std::move(refusal.code),
                                                                 .message = std::move(refusal.message),
                                                                 .names = std::move(refusal.names),
                                                                 .suggested = refusal.suggested}),
                       {}};
    }
    if constexpr (std::is_void_v<T>) {
        return Outcome{jsonResponse(status, "{}"), std::string{coupleId}};
    } else {
        auto text = Wire::encode(**result);
        if (!text) return std::unexpected(StoreError{"what the pairing service answered cannot be written"});
        return Outcome{jsonResponse(status, std::move(*text)), std::string{coupleId}};
    }
}

void Routes::answerPairing(const Call& call, Respond respond) {
    switch (call.match.route) {
    case Route::createCouple: return createCouple(call, std::move(respond));
    case Route::joinByCode: return joinByCode(call, std::move(respond));
    case Route::joinByLink: return joinByLink(call, std::move(respond));
    case Route::handoff: return handoff(call, std::move(respond));
    case Route::mintLink:
    case Route::createCode:
    case Route::setName: return takeName(call, std::move(respond));
    default: return removeDevices(call, std::move(respond));
    }
}

void Routes::createCouple(const Call& call, Respond respond) {
    auto body = Wire::decode<CreateCoupleRequest>(call.request.body);
    if (!body) return respond(unreadable());
    inStore([&pairing = ports_.pairing, person = personOf(*body), now = ports_.clock.now()](
                Store& store) { return outcomeOf(pairing.createCouple(store, person, now), statusCreated); },
            std::move(respond));
}

StoreResult<Routes::Outcome> Routes::cameBy(PairingResult<Joined> joined) {
    const auto coupleId = joined && *joined ? (*joined)->coupleId : std::string{};
    return outcomeOf(std::move(joined), statusOk, coupleId);
}

void Routes::joinByCode(const Call& call, Respond respond) {
    auto body = Wire::decode<JoinByCodeRequest>(call.request.body);
    if (!body) return respond(unreadable());
    inStore([&pairing = ports_.pairing, body = std::move(*body), origin = call.request.client.origin(),
             now = ports_.clock.now()](
                Store& store) { return cameBy(pairing.joinByCode(store, body.code, personOf(body), origin, now)); },
            std::move(respond));
}

void Routes::joinByLink(const Call& call, Respond respond) {
    auto body = Wire::decode<JoinByLinkRequest>(call.request.body);
    if (!body) return respond(unreadable());
    inStore([&pairing = ports_.pairing, body = std::move(*body), now = ports_.clock.now()](
                Store& store) { return cameBy(pairing.joinByLink(store, body.inviteId, personOf(body), now)); },
            std::move(respond));
}

void Routes::handoff(const Call& call, Respond respond) {
    auto body = Wire::decode<HandoffRequest>(call.request.body);
    if (!body) return respond(unreadable());
    inStore([&pairing = ports_.pairing, inviteId = std::move(body->inviteId), now = ports_.clock.now()](Store& store)
                -> StoreResult<Outcome> { return outcomeOf(pairing.handoff(store, inviteId, now), statusOk); },
            std::move(respond));
}

// Calls of a device whose body is a name.
void Routes::takeName(const Call& call, Respond respond) {
    auto body = Wire::decode<NameRequest>(call.request.body);
    if (!body) return respond(unreadable());
    byDevice(
        call,
        [&pairing = ports_.pairing, match = call.match, name = std::move(body->name),
         now = ports_.clock.now()](Store& store, const DeviceRecord& by) {
            const auto& coupleId = match.id;
            switch (match.route) {
            case Route::mintLink:
                return outcomeOf(pairing.mintLink(store, coupleId, by, name, now), statusCreated, coupleId);
            case Route::createCode:
                return outcomeOf(pairing.createCode(store, coupleId, by, name, now), statusCreated, coupleId);
            default: return outcomeOf(pairing.setName(store, coupleId, by, name), statusOk, coupleId);
            }
        },
        std::move(respond));
}

// Calls without a body, which take something away.
void Routes::removeDevices(const Call& call, Respond respond) {
    byDevice(
        call,
        [&pairing = ports_.pairing, match = call.match, now = ports_.clock.now()](Store& store,
                                                                                  const DeviceRecord& by) {
            const auto& coupleId = match.id;
            switch (match.route) {
            case Route::leave: return outcomeOf(pairing.leave(store, coupleId, by, now), statusOk, coupleId);
            case Route::releasePartner:
                return outcomeOf(pairing.releasePartner(store, coupleId, by, now), statusOk, coupleId);
            default: return outcomeOf(pairing.resetLinks(store, coupleId, by, now), statusOk);
            }
        },
        std::move(respond));
}

} // namespace lumaro
