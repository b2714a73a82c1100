// SPDX-License-Identifier: Apache-2.0
#pragma once

// The bodies of the pairing service's calls and answers, one for both sides of them.

#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// Asks for a new board.
struct CreateCoupleRequest {
    std::string deviceId;
    std::string name;

    static constexpr auto fields() {
        return std::tuple{Field{"deviceId", &CreateCoupleRequest::deviceId}, Field{"name", &CreateCoupleRequest::name}};
    }
    bool operator==(const CreateCoupleRequest&) const = default;
};

/// Says what this person is called: the whole body of a new name, and of a request for a link or a code.
struct NameRequest {
    std::string name;

    static constexpr auto fields() { return std::tuple{Field{"name", &NameRequest::name}}; }
    bool operator==(const NameRequest&) const = default;
};

struct JoinByCodeRequest {
    std::string code;
    std::string deviceId;
    std::string name;
    std::optional<PartnerID> slot; ///< the answer to "choose_person"

    static constexpr auto fields() {
        return std::tuple{Field{"code", &JoinByCodeRequest::code}, Field{"deviceId", &JoinByCodeRequest::deviceId},
                          Field{"name", &JoinByCodeRequest::name}, Field{"slot", &JoinByCodeRequest::slot}};
    }
    bool operator==(const JoinByCodeRequest&) const = default;
};

struct JoinByLinkRequest {
    std::string inviteId;
    std::string deviceId;
    std::string name;
    std::optional<PartnerID> slot; ///< the answer to "choose_person"

    static constexpr auto fields() {
        return std::tuple{Field{"inviteId", &JoinByLinkRequest::inviteId},
                          Field{"deviceId", &JoinByLinkRequest::deviceId}, Field{"name", &JoinByLinkRequest::name},
                          Field{"slot", &JoinByLinkRequest::slot}};
    }
    bool operator==(const JoinByLinkRequest&) const = default;
};

/// Asks whether an invite still lives.
struct HandoffRequest {
    std::optional<std::string> inviteId;

    static constexpr auto fields() { return std::tuple{Field{"inviteId", &HandoffRequest::inviteId}}; }
    bool operator==(const HandoffRequest&) const = default;
};

/// An invite that is alive, and who invites, as far as the service knows.
struct Handoff {
    std::string inviteId;
    std::optional<std::string> inviter;

    static constexpr auto fields() {
        return std::tuple{Field{"inviteId", &Handoff::inviteId}, Field{"inviter", &Handoff::inviter}};
    }
    bool operator==(const Handoff&) const = default;
};

/// A link that lets the partner join, and when it stops working.
struct Invite {
    std::string inviteId;
    std::string link;
    Instant expiresAt;

    static constexpr auto fields() {
        return std::tuple{Field{"inviteId", &Invite::inviteId}, Field{"link", &Invite::link},
                          Field{"expiresAt", &Invite::expiresAt}};
    }
    bool operator==(const Invite&) const = default;
};

/// A new board, and this device's way onto it.
struct CreatedCouple {
    std::string coupleId;
    std::string token;
    Invite invite;

    static constexpr auto fields() {
        return std::tuple{Field{"coupleId", &CreatedCouple::coupleId}, Field{"token", &CreatedCouple::token},
                          Field{"invite", &CreatedCouple::invite}};
    }
    bool operator==(const CreatedCouple&) const = default;
};

/// Six digits that let the partner join once, and the slot they join as.
struct ShareCode {
    std::string code;
    Instant expiresAt;
    PartnerID slot = PartnerID::b;

    static constexpr auto fields() {
        return std::tuple{Field{"code", &ShareCode::code}, Field{"expiresAt", &ShareCode::expiresAt},
                          Field{"slot", &ShareCode::slot}};
    }
    bool operator==(const ShareCode&) const = default;
};

enum class JoinStatus : std::uint8_t {
    joined,   ///< as the slot that was free
    rejoined, ///< as one of the two people who were there
    already,  ///< this device was on the board
};

constexpr std::array<std::string_view, 3> namesOf(JoinStatus) {
    return {"joined", "rejoined", "already"};
}

struct Joined {
    std::string token;
    std::string coupleId;
    std::string partnerName;
    PartnerID slot = PartnerID::b;
    JoinStatus status = JoinStatus::joined;

    static constexpr auto fields() {
        return std::tuple{Field{"token", &Joined::token}, Field{"coupleId", &Joined::coupleId},
                          Field{"partnerName", &Joined::partnerName}, Field{"slot", &Joined::slot},
                          Field{"status", &Joined::status}};
    }
    bool operator==(const Joined&) const = default;
};

/// The body of every refusal.
struct ServerError {
    std::string code; ///< for programs
    std::string message;
    std::optional<SlotNames> names;     ///< of "choose_person": the two people on the board
    std::optional<PartnerID> suggested; ///< of "choose_person": who this device is, most likely

    static constexpr auto fields() {
        return std::tuple{Field{"code", &ServerError::code}, Field{"message", &ServerError::message},
                          Field{"names", &ServerError::names}, Field{"suggested", &ServerError::suggested}};
    }
    bool operator==(const ServerError&) const = default;
};

} // namespace lumaro
