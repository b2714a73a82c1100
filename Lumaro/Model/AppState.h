// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/KeychainStore.h"
#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroCore/Services/ContactCard.h"
#include "LumaroCore/SyncClient/SyncClient.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>

namespace lumaro {

/// How far the first run has come.
enum class OnboardingStep : std::uint8_t { welcome, makeItYours, bringThemOver };

constexpr std::array<std::string_view, 3> namesOf(OnboardingStep) {
    return {"welcome", "makeItYours", "bringThemOver"};
}

/// How a join was asked for.
enum class JoinDoor : std::uint8_t { link, code };

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
    struct Failed {
        std::string message; ///< for people
        bool operator==(const Failed&) const = default;
    };
    std::variant<Idle, Working, Choosing, Failed> value;

    bool operator==(const PairingPhase&) const = default;
};

/// A join that has just been completed.
struct Arrival {
    std::string partnerName;
    JoinStatus status = JoinStatus::joined;
    Instant at;

    bool operator==(const Arrival&) const = default;
};

/// What is known of the partner right now.
struct BoardPresence {
    bool isPartnerOnline = false;
    Activity activity = Activity::idle;
    std::optional<NowPlaying> nowPlaying;
    std::optional<Here> here;
    /// Of each slot's person, as the room has it.
    std::map<PartnerID, CalendarStatus> calendarStatus;
    std::map<PartnerID, CalendarDay> calendar;

    bool operator==(const BoardPresence&) const = default;
};

/// Whether this computer can keep the token, and where.
enum class SecretPlace : std::uint8_t {
    keyring,
    asking, ///< there is no keyring: the person is asked whether a file will do
    file,   ///< of the profile, readable by this user alone; as the person said
};

constexpr std::array<std::string_view, 3> namesOf(SecretPlace) {
    return {"keyring", "asking", "file"};
}

/// Everything that a view may show. A plain value, replaced piece by piece on the main thread.
struct AppState {
    std::optional<CoupleToken> token;
    /// As this device shows it, with those items that are falling.
    Board board;
    BoardPresence presence;
    /// What the partner sees of this person.
    ClientMessage::Presence ownPresence;
    ConnectionState connection;
    std::size_t pendingBatches = 0;
    /// Acts that are shown but not on disk yet.
    std::size_t unstoredBatches = 0;
    bool lastSendQueued = false;
    std::set<UUID> arriving;
    std::set<UUID> falling;
    bool showsBoardOnDesktop = true;
    std::map<PartnerID, std::string> partnerNames;
    int quickNoteRequest = 0;
    std::optional<std::string> quickNoteText;
    int markerRequest = 0;
    PairingPhase pairing;
    std::optional<Arrival> arrival;
    std::optional<OnboardingStep> onboarding;
    bool isPresentingBoardPage = false;
    std::string myDisplayName;
    std::string partnerDisplayName;
    bool isSettling = false;
    std::optional<BoardLink> boardLink;
    std::optional<ShareCode> shareCode;
    bool isMintingCode = false;
    bool connectionRejected = false;
    bool keychainLocked = false;
    std::optional<Instant> lastBlockRang;
    ContactsAccess contactsAccess = ContactsAccess::notDetermined;
    SecretPlace secretPlace = SecretPlace::keyring;
    /// Pairing has happened before; with no token, this device is off its board.
    bool wasPaired = false;
    bool isRestoring = true;
    /// The latest text about something that did not work out, and how many there have been.
    std::string notice;
    int notices = 0;
};

} // namespace lumaro
