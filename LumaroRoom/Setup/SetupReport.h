// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"
#include "LumaroRoom/Server/Url.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// What stands between people's devices and a room. The numbers are the exit statuses of `lumaro-room check-setup`.
enum class SetupFault : std::uint8_t {
    noName = 10,
    notReachable = 11,
    certificate = 12,
    noRoomBehind = 13,
    notARoom = 14,
    noUpgrade = 15,
    wrongPublicURL = 16,
    clockOff = 17,
    unwell = 18,
};

/// An answer over HTTP, as far as it is looked at.
struct SetupAnswer {
    int status = 0;
    std::string body;
    std::string location;        ///< where a redirection leads
    std::optional<Instant> date; ///< of "Date"
};

/// Why a certificate was not taken.
struct CertificateFault {
    enum class Kind : std::uint8_t { noTls, otherName, expired, notYet, unknownAuthority };
    Kind kind = Kind::noTls;
    std::string words; ///< the library's own
};

/// What was seen of a server from outside, in the order in which a device would. A failure ends it: what comes behind
/// is not looked at.
struct SetupSight {
    using Answer = std::expected<SetupAnswer, std::string>; ///< or why there was none, in the library's words

    Url asked;
    std::expected<std::vector<std::string>, std::string> addresses; ///< of the host; or why it has none
    std::optional<std::string> unreachable;                         ///< why nothing answers at them
    std::optional<CertificateFault> untrusted;
    Answer plain;    ///< to a request for a room's socket that asks for no upgrade, which a room refuses in its own way
    Answer upgraded; ///< to one that asks for it
    Answer page;     ///< the download page, whose button names the public URL
    Answer health;
    Instant now; ///< this computer's, when the first answer came
};

/// What a setup lacks, for people.
struct SetupReport {
    struct Finding {
        SetupFault fault;
        std::string sentence; ///< what is wrong
        std::string remedy;   ///< what to do
    };
    std::vector<Finding> findings;      ///< the first one is that which a device meets first
    std::vector<std::string> goodSigns; ///< what was found to be right
    std::vector<std::string> remarks;   ///< what could not be told, or is no fault of the setup

    int exitStatus() const { return findings.empty() ? 0 : static_cast<int>(findings.front().fault); }
    /// A line for each, the findings with what to do below them.
    std::string text() const;
};

/// The path with which a room is asked for a socket without a token. No couple has this id.
inline constexpr std::string_view setupSocketPath = "/couples/check-setup/ws";
/// The download page of an invite that nobody made.
inline constexpr std::string_view setupPagePath = "/dl/check-setup";
/// More than this between two clocks is said to be wrong: edits that were made offline are placed by them.
inline constexpr std::chrono::seconds clockTolerance{60};

SetupReport judge(const SetupSight& sight);

} // namespace lumaro
