// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Pairing/PairingClient.h"

#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Support/Wire.h"

#include <array>
#include <type_traits>
#include <utility>

namespace lumaro {
namespace {

using Case = PairingFailure::Case;

constexpr Seconds timeout{15};

// For the log. A path is told only where it consists of our own keys; other errors may quote what the service sent.
std::string whatIsWrong(const DecodeError& error) {
    switch (error.fault) {
    case DecodeFault::missingKey: return "missing " + error.path;
    case DecodeFault::duplicateKey: return "twice " + error.path;
    case DecodeFault::wrongType: return "wrong type of " + error.path;
    case DecodeFault::outOfRange: return "out of range " + error.path;
    case DecodeFault::invalidValue: return "invalid value of " + error.path;
    case DecodeFault::malformed:
    case DecodeFault::invalidUtf8:
    case DecodeFault::trailingContent:
    case DecodeFault::tooDeep:
    case DecodeFault::tooLarge: break;
    }
    return "not one JSON value";
}

Case caseOf(std::string_view code, Case notFound) {
    constexpr std::array<std::pair<std::string_view, Case>, 8> cases{{{"choose_person", Case::choosePerson},
                                                                      {"invite_used", Case::linkUsed},
                                                                      {"invite_expired", Case::linkExpired},
                                                                      {"invite_not_found", Case::linkNotFound},
                                                                      {"code_used", Case::codeUsed},
                                                                      {"code_expired", Case::codeExpired},
                                                                      {"code_not_found", Case::codeNotFound},
                                                                      {"rate_limited", Case::rateLimited}}};
    if (code == "not_found") return notFound;
    for (const auto& [name, kind] : cases) {
        if (name == code) return kind;
    }
    return Case::server;
}

// The text of a body. One with a name that is not UTF-8 has none, and the service refuses the call.
template <class Request>
std::string bodyOf(const Request& request) {
    return Wire::encode(request).value_or(std::string{});
}

// What a success brings: nothing, the answer itself, or what stands in it.
template <class Answer, class T>
std::expected<T, PairingFailure> resultOf(const HttpResponse& response, Log& log) {
    if constexpr (std::is_void_v<T>) {
        return {};
    } else {
        auto answer = Wire::decode<Answer>(response.body);
        if (!answer) {
            log.write(LogLevel::error, "pairing", "pairing response did not decode: " + whatIsWrong(answer.error()));
            PairingFailure failure;
            failure.status = response.status;
            return std::unexpected(std::move(failure));
        }
        return std::move(*answer);
    }
}

PairingFailure offline(const HttpFailure& why) {
    PairingFailure failure;
    failure.kind = Case::offline;
    failure.message = why.message;
    return failure;
}

} // namespace

PairingFailure PairingFailure::of(const HttpResponse& answer, Case notFound) {
    PairingFailure failure;
    failure.status = answer.status;
    auto error = Wire::decode<ServerError>(answer.body);
    if (!error) return failure;
    failure.kind = caseOf(error->code, notFound);
    failure.message = std::move(error->message);
    if (failure.kind == Case::choosePerson) {
        failure.names = std::move(error->names).value_or(SlotNames{});
        failure.suggested = error->suggested;
    }
    return failure;
}

std::string_view PairingFailure::text() const {
    switch (kind) {
    case Case::choosePerson: return "which of you is this mac?";
    case Case::server: return "the board didn't answer just then. try again in a moment?";
    case Case::linkUsed: return "that invite was single-use and it's been used — ask them for our link 💌";
    // On purpose the same: to people both mean that the link was replaced.
    case Case::linkExpired:
    case Case::linkNotFound: return "that link was replaced — ask them for the new one 💌";
    case Case::codeUsed: return "that code's been used — ask them for a fresh one 💌";
    case Case::codeExpired: return "that code timed out — ask them for a fresh one 💌";
    case Case::codeNotFound: return "those digits don't match a board. check them with them?";
    case Case::rateLimited: return "a few too many wrong codes just now. give it a little while?";
    case Case::offline: return "couldn't reach the board. it'll work once you're online.";
    }
    std::unreachable();
}

struct PairingClient::Ask {
    std::string method;
    std::string url;
    std::string body;
    const CoupleToken* token = nullptr; ///< of calls on a couple
    Case notFound = Case::server;
};

PairingClient::PairingClient(std::string serverURL, std::string clientVersion, HttpClient& http, Log& log)
    : serverURL_(std::move(serverURL)), clientName_("mac/" + std::move(clientVersion)), http_(http), log_(log) {
}

std::string PairingClient::coupleUrl(const CoupleToken& token,
                                     std::initializer_list<std::string_view> components) const {
    return urlWithPath(urlWithPath(serverURL_, {"couples", token.coupleId}), components);
}

// What waits for the answer refers to the log alone: the client may be gone when the answer comes.
template <class Answer, class T>
PairingClient::Call PairingClient::send(Ask ask, Then<T> then) {
    HttpRequest request{.method = std::move(ask.method),
                        .url = std::move(ask.url),
                        .headers = {{"content-type", "application/json"}, {"x-lmr-client", clientName_}},
                        .body = std::move(ask.body),
                        .timeout = timeout};
    if (ask.token != nullptr) request.headers.push_back({"authorization", ask.token->authorizationHeaderValue()});
    return http_.send(std::move(request), [&log = log_, notFound = ask.notFound,
                                           then = std::move(then)](HttpClient::Answer answer) mutable {
        if (!answer) return then(std::unexpected(offline(answer.error())));
        if (!answer->isSuccess()) return then(std::unexpected(Failure::of(*answer, notFound)));
        then(resultOf<Answer, T>(*answer, log));
    });
}

PairingClient::Call PairingClient::createCouple(std::string_view deviceId, std::string_view name,
                                                Then<CreatedCouple> then) {
    return send<CreatedCouple>({.method = "POST",
                                .url = urlWithPath(serverURL_, {"couples"}),
                                .body = bodyOf(CreateCoupleRequest{std::string{deviceId}, std::string{name}})},
                               std::move(then));
}

PairingClient::Call PairingClient::setName(std::string_view name, const CoupleToken& token, Then<void> then) {
    return send<void>({.method = "PUT",
                       .url = coupleUrl(token, {"names", "self"}),
                       .body = bodyOf(NameRequest{std::string{name}}),
                       .token = &token},
                      std::move(then));
}

PairingClient::Call PairingClient::mintLink(const CoupleToken& token, std::string_view name, Then<Invite> then) {
    return send<Invite>({.method = "POST",
                         .url = coupleUrl(token, {"links"}),
                         .body = bodyOf(NameRequest{std::string{name}}),
                         .token = &token},
                        std::move(then));
}

PairingClient::Call PairingClient::resetLinks(const CoupleToken& token, Then<void> then) {
    return send<void>({.method = "DELETE", .url = coupleUrl(token, {"links"}), .body = {}, .token = &token},
                      std::move(then));
}

PairingClient::Call PairingClient::createCode(const CoupleToken& token, std::string_view name, Then<ShareCode> then) {
    return send<ShareCode>({.method = "POST",
                            .url = coupleUrl(token, {"codes"}),
                            .body = bodyOf(NameRequest{std::string{name}}),
                            .token = &token},
                           std::move(then));
}

PairingClient::Call PairingClient::leave(const CoupleToken& token, Then<void> then) {
    return send<void>({.method = "DELETE", .url = coupleUrl(token, {"devices", "self"}), .body = {}, .token = &token},
                      std::move(then));
}

PairingClient::Call PairingClient::releasePartner(const CoupleToken& token, Then<void> then) {
    return send<void>({.method = "DELETE", .url = coupleUrl(token, {"partner"}), .body = {}, .token = &token},
                      std::move(then));
}

PairingClient::Call PairingClient::joinByCode(std::string_view code, const Joiner& joiner, Then<Joined> then) {
    return send<Joined>(
        {.method = "POST",
         .url = urlWithPath(serverURL_, {"joins", "code"}),
         .body = bodyOf(JoinByCodeRequest{std::string{code}, joiner.deviceId, joiner.name, joiner.slot}),
         .notFound = Case::codeNotFound},
        std::move(then));
}

PairingClient::Call PairingClient::joinByLink(std::string_view inviteId, const Joiner& joiner, Then<Joined> then) {
    return send<Joined>(
        {.method = "POST",
         .url = urlWithPath(serverURL_, {"joins", "link"}),
         .body = bodyOf(JoinByLinkRequest{std::string{inviteId}, joiner.deviceId, joiner.name, joiner.slot}),
         .notFound = Case::linkNotFound},
        std::move(then));
}

PairingClient::Call PairingClient::handoff(std::optional<std::string> inviteId, Then<Handoff> then) {
    return send<Handoff>({.method = "POST",
                          .url = urlWithPath(serverURL_, {"handoff"}),
                          .body = bodyOf(HandoffRequest{std::move(inviteId)}),
                          .notFound = Case::linkNotFound},
                         std::move(then));
}

} // namespace lumaro
