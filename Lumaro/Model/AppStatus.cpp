// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/AppStatus.h"

#include "LumaroCore/Protocol/ProtocolJson.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/Overloaded.h"

#include <cstdint>
#include <tuple>
#include <vector>

namespace lumaro {
namespace {

// The row of the session's states that holds.
std::string_view sessionOf(const AppState& state) {
    if (state.isRestoring) return "restoring";
    if (state.keychainLocked) return "keychainLocked";
    if (!state.token) return state.wasPaired ? "offTheBoard" : "neverPaired";
    return state.connectionRejected ? "refused" : "onTheBoard";
}

std::string_view nameOf(const ConnectionState& state) {
    return std::visit(Overloaded{[](const ConnectionState::Idle&) { return "idle"; },
                                 [](const ConnectionState::Connecting&) { return "connecting"; },
                                 [](const ConnectionState::Connected&) { return "connected"; },
                                 [](const ConnectionState::Waiting&) { return "waiting"; },
                                 [](const ConnectionState::Stopped&) { return "stopped"; },
                                 [](const ConnectionState::Rejected&) { return "rejected"; }},
                      state.value);
}

} // namespace

// Outside of the unnamed namespace: how it is written is found by its own.
struct WrittenArrival {
    std::string partnerName;
    JoinStatus status = JoinStatus::joined;
    Instant at;

    static constexpr auto fields() {
        return std::tuple{Field{"partnerName", &WrittenArrival::partnerName}, Field{"status", &WrittenArrival::status},
                          Field{"at", &WrittenArrival::at}};
    }
};

struct WrittenPairing {
    std::string phase;
    std::optional<SlotNames> names;
    std::optional<PartnerID> suggested;
    std::optional<std::string> message;

    static constexpr auto fields() {
        return std::tuple{Field{"phase", &WrittenPairing::phase}, Field{"names", &WrittenPairing::names},
                          Field{"suggested", &WrittenPairing::suggested}, Field{"message", &WrittenPairing::message}};
    }
};

struct WrittenPresence {
    bool partnerOnline = false;
    Activity activity = Activity::idle;
    std::optional<NowPlaying> nowPlaying;
    std::optional<Here> here;

    static constexpr auto fields() {
        return std::tuple{Field{"partnerOnline", &WrittenPresence::partnerOnline},
                          Field{"activity", &WrittenPresence::activity},
                          Field{"nowPlaying", &WrittenPresence::nowPlaying}, Field{"here", &WrittenPresence::here}};
    }
};

struct WrittenState {
    std::string session;
    std::optional<std::string> token;
    std::string connection;
    std::int64_t items = 0;
    std::int64_t pendingBatches = 0;
    std::int64_t unstoredBatches = 0;
    bool lastSendQueued = false;
    std::vector<UUID> arriving;
    std::vector<UUID> falling;
    bool showsBoardOnDesktop = true;
    SlotNames partnerNames;
    WrittenPresence presence;
    std::int64_t quickNoteRequest = 0;
    std::optional<std::string> quickNoteText;
    std::int64_t markerRequest = 0;
    WrittenPairing pairing;
    std::optional<WrittenArrival> arrival;
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
    std::string notice;
    std::int64_t notices = 0;

    static constexpr auto fields() {
        using W = WrittenState;
        return std::tuple{Field{"session", &W::session},
                          Field{"token", &W::token},
                          Field{"connection", &W::connection},
                          Field{"items", &W::items},
                          Field{"pendingBatches", &W::pendingBatches},
                          Field{"unstoredBatches", &W::unstoredBatches},
                          Field{"lastSendQueued", &W::lastSendQueued},
                          Field{"arriving", &W::arriving},
                          Field{"falling", &W::falling},
                          Field{"showsBoardOnDesktop", &W::showsBoardOnDesktop},
                          Field{"partnerNames", &W::partnerNames},
                          Field{"presence", &W::presence},
                          Field{"quickNoteRequest", &W::quickNoteRequest},
                          Field{"quickNoteText", &W::quickNoteText},
                          Field{"markerRequest", &W::markerRequest},
                          Field{"pairing", &W::pairing},
                          Field{"arrival", &W::arrival},
                          Field{"onboarding", &W::onboarding},
                          Field{"isPresentingBoardPage", &W::isPresentingBoardPage},
                          Field{"myDisplayName", &W::myDisplayName},
                          Field{"partnerDisplayName", &W::partnerDisplayName},
                          Field{"isSettling", &W::isSettling},
                          Field{"boardLink", &W::boardLink},
                          Field{"shareCode", &W::shareCode},
                          Field{"isMintingCode", &W::isMintingCode},
                          Field{"connectionRejected", &W::connectionRejected},
                          Field{"keychainLocked", &W::keychainLocked},
                          Field{"lastBlockRang", &W::lastBlockRang},
                          Field{"contactsAccess", &W::contactsAccess},
                          Field{"secretPlace", &W::secretPlace},
                          Field{"notice", &W::notice},
                          Field{"notices", &W::notices}};
    }
};

namespace {

WrittenPairing written(const PairingPhase& phase) {
    return std::visit(
        Overloaded{
            [](const PairingPhase::Idle&) { return WrittenPairing{"idle", {}, {}, {}}; },
            [](const PairingPhase::Working&) { return WrittenPairing{"working", {}, {}, {}}; },
            [](const PairingPhase::Choosing& one) { return WrittenPairing{"choosing", one.names, one.suggested, {}}; },
            [](const PairingPhase::Failed& one) { return WrittenPairing{"failed", {}, {}, one.message}; }},
        phase.value);
}

SlotNames written(const std::map<PartnerID, std::string>& names) {
    SlotNames all;
    for (const auto& [person, name] : names) all.of(person) = name;
    return all;
}

WrittenState written(const AppState& state) {
    WrittenState out;
    out.session = sessionOf(state);
    if (state.token) out.token = state.token->redacted();
    out.connection = nameOf(state.connection);
    out.items = static_cast<std::int64_t>(state.board.items.size());
    out.pendingBatches = static_cast<std::int64_t>(state.pendingBatches);
    out.unstoredBatches = static_cast<std::int64_t>(state.unstoredBatches);
    out.lastSendQueued = state.lastSendQueued;
    out.arriving.assign(state.arriving.begin(), state.arriving.end());
    out.falling.assign(state.falling.begin(), state.falling.end());
    out.showsBoardOnDesktop = state.showsBoardOnDesktop;
    out.partnerNames = written(state.partnerNames);
    out.presence = {state.presence.isPartnerOnline, state.presence.activity, state.presence.nowPlaying,
                    state.presence.here};
    out.quickNoteRequest = state.quickNoteRequest;
    out.quickNoteText = state.quickNoteText;
    out.markerRequest = state.markerRequest;
    out.pairing = written(state.pairing);
    if (state.arrival) out.arrival = {state.arrival->partnerName, state.arrival->status, state.arrival->at};
    out.onboarding = state.onboarding;
    out.isPresentingBoardPage = state.isPresentingBoardPage;
    out.myDisplayName = state.myDisplayName;
    out.partnerDisplayName = state.partnerDisplayName;
    out.isSettling = state.isSettling;
    out.boardLink = state.boardLink;
    out.shareCode = state.shareCode;
    out.isMintingCode = state.isMintingCode;
    out.connectionRejected = state.connectionRejected;
    out.keychainLocked = state.keychainLocked;
    out.lastBlockRang = state.lastBlockRang;
    out.contactsAccess = state.contactsAccess;
    out.secretPlace = state.secretPlace;
    out.notice = state.notice;
    out.notices = state.notices;
    return out;
}

} // namespace

std::string statusJson(const AppState& state) {
    auto text = Wire::encode(written(state));
    if (!text) fatal("the application's state has no JSON");
    return std::move(*text);
}

} // namespace lumaro
