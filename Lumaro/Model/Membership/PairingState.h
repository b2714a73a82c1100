// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace lumaro {

/// How far the first run has come.
enum class OnboardingStep : std::uint8_t { welcome, makeItYours, bringThemOver };

constexpr std::array<std::string_view, 3> namesOf(OnboardingStep) {
    return {"welcome", "makeItYours", "bringThemOver"};
}

/// How a pairing request stands.
struct PairingPhase {
    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Working {
        bool operator==(const Working&) const = default;
    };
    /// Both people are on the board: this person must say which one they are.
    struct Choosing {
        SlotNames names;
        std::optional<PartnerID> suggested;
        bool operator==(const Choosing&) const = default;
    };
    /// An invite or a code to another board than the one that this device is on, or to another server than it knows:
    /// the person must say whether they want that.
    struct Asking {
        std::string inviter;     ///< empty when the service does not know
        std::string server;      ///< base URL of the invite's
        bool leavesBoard = true; ///< this device is on a board now, and not on one that was only started
        bool isByCode = false;   ///< whose board it leads to is not known
        std::size_t items = 0;   ///< that hang on the board that would be left
        bool operator==(const Asking&) const = default;
    };
    /// No server is known that the code could be tried on: the person must give its address.
    struct NeedsServer {
        bool operator==(const NeedsServer&) const = default;
    };
    struct Failed {
        std::string message; ///< for people
        bool operator==(const Failed&) const = default;
    };
    using Value = std::variant<Idle, Working, Choosing, Asking, NeedsServer, Failed>;
    Value value;

    bool operator==(const PairingPhase&) const = default;
};

/// A join that has just been completed.
struct Arrival {
    std::string partnerName;
    JoinStatus status = JoinStatus::joined;
    Instant at;

    bool operator==(const Arrival&) const = default;
};

struct PairingState {
    PairingPhase pairing;
    std::optional<Arrival> arrival;
    std::optional<OnboardingStep> onboarding;
};

} // namespace lumaro
