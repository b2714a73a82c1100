// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Pairing/InviteLink.h"
#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Why a pairing call failed, with the text that people see.
struct PairingFailure {
    enum class Case : std::uint8_t {
        choosePerson, ///< both people are on the board: say which one this device is
        server,
        linkUsed,
        linkExpired,
        linkNotFound,
        codeUsed,
        codeExpired,
        codeNotFound,
        rateLimited,
        offline,
    };
    Case kind = Case::server;
    SlotNames names;                    ///< of `choosePerson`
    std::optional<PartnerID> suggested; ///< of `choosePerson`
    int status = 0;                     ///< of HTTP; 0 of `offline`
    std::string message;                ///< the service's own, for the log

    /// What an answer that is no success means; `notFound` is what this call takes "not_found" for.
    static PairingFailure of(const HttpResponse& answer, Case notFound = Case::server);

    std::string_view text() const;

    bool operator==(const PairingFailure&) const = default;
};

/// Talks to the pairing service. Used on the thread of its `HttpClient`.
class PairingClient {
public:
    using Failure = PairingFailure;
    template <class T>
    using Then = std::move_only_function<void(std::expected<T, Failure>)>;
    /// A call under way; dropping it cancels it.
    using Call = std::unique_ptr<HttpClient::Call>;

    /// `clientVersion` is sent as "mac/" + version. The ports outlive the client.
    PairingClient(std::string serverURL, std::string clientVersion, HttpClient& http, Log& log);

    [[nodiscard]] Call createCouple(std::string_view deviceId, std::string_view name, Then<CreatedCouple> then);
    [[nodiscard]] Call setName(std::string_view name, const CoupleToken& token, Then<void> then);
    [[nodiscard]] Call mintLink(const CoupleToken& token, std::string_view name, Then<Invite> then);
    [[nodiscard]] Call resetLinks(const CoupleToken& token, Then<void> then);
    [[nodiscard]] Call createCode(const CoupleToken& token, std::string_view name, Then<ShareCode> then);
    /// Takes this device off the board.
    [[nodiscard]] Call leave(const CoupleToken& token, Then<void> then);
    /// Takes the partner's devices off the board.
    [[nodiscard]] Call releasePartner(const CoupleToken& token, Then<void> then);

    /// Who joins, and as whom: none until the service asks to choose.
    struct Joiner {
        std::string deviceId;
        std::string name;
        std::optional<PartnerID> slot;
    };
    [[nodiscard]] Call joinByCode(std::string_view code, const Joiner& joiner, Then<Joined> then);
    [[nodiscard]] Call joinByLink(std::string_view inviteId, const Joiner& joiner, Then<Joined> then);
    /// Whether the invite is alive, and who invites; without an id, whether one waits for a first run.
    [[nodiscard]] Call handoff(std::optional<std::string> inviteId, Then<Handoff> then);

private:
    struct Ask;
    template <class Answer, class T>
    Call send(Ask ask, Then<T> then);
    std::string coupleUrl(const CoupleToken& token, std::initializer_list<std::string_view> components) const;

    std::string serverURL_;
    std::string clientName_;
    HttpClient& http_;
    Log& log_;
};

} // namespace lumaro
