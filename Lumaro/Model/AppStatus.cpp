// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/AppStatus.h"

#include "LumaroCore/Protocol/ProtocolJson.h"
#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/JsonWriter.h"
#include "LumaroCore/Support/Overloaded.h"

#include <cstdint>

namespace lumaro {
namespace {

/// An object with one entry after the other; what is absent has none.
class Entries {
public:
    explicit Entries(JsonWriter& writer) : writer_(writer) { writer_.openObject(); }
    Entries(const Entries&) = delete;
    Entries& operator=(const Entries&) = delete;
    ~Entries() { writer_.closeObject(); }

    template <class T>
    Entries& put(std::string_view key, const T& value) {
        writer_.freeKey(key);
        if constexpr (std::convertible_to<T, std::string_view>) {
            writer_.string(value);
        } else if constexpr (std::integral<T> && !std::same_as<T, bool>) {
            writer_.integer(static_cast<std::int64_t>(value));
        } else {
            writeJson(writer_, value);
        }
        return *this;
    }
    template <class T>
    Entries& put(std::string_view key, const std::optional<T>& value) {
        return value ? put(key, *value) : *this;
    }

private:
    JsonWriter& writer_;
};

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

std::vector<std::string> namesOf(const std::vector<NearbyRoom>& rooms) {
    std::vector<std::string> names;
    names.reserve(rooms.size());
    for (const auto& room : rooms) names.push_back(room.name);
    return names;
}

} // namespace

// Outside of the unnamed namespace: found by what they write.

static void writeJson(JsonWriter& writer, const std::set<UUID>& ids) {
    writer.openArray();
    for (const auto& id : ids) writeJson(writer, id);
    writer.closeArray();
}

template <class T>
static void writeJson(JsonWriter& writer, const std::map<PartnerID, T>& ofPeople) {
    Entries entries{writer};
    for (const auto& [person, value] : ofPeople) entries.put(nameOf(person), value);
}

static void writeJson(JsonWriter& writer, const PairingPhase& pairing) {
    Entries entries{writer};
    std::visit(Overloaded{[&](const PairingPhase::Idle&) { entries.put("phase", "idle"); },
                          [&](const PairingPhase::Working&) { entries.put("phase", "working"); },
                          [&](const PairingPhase::Choosing& one) {
                              entries.put("phase", "choosing").put("names", one.names).put("suggested", one.suggested);
                          },
                          [&](const PairingPhase::Asking& one) {
                              entries.put("phase", "asking")
                                  .put("inviter", one.inviter)
                                  .put("server", one.server)
                                  .put("leavesBoard", one.leavesBoard)
                                  .put("byCode", one.isByCode);
                          },
                          [&](const PairingPhase::NeedsServer&) { entries.put("phase", "needsServer"); },
                          [&](const PairingPhase::Failed& one) {
                              entries.put("phase", "failed").put("message", one.message);
                          }},
               pairing.value);
}

static void writeJson(JsonWriter& writer, const BoardPresence& presence) {
    Entries{writer}
        .put("partnerOnline", presence.isPartnerOnline)
        .put("activity", presence.activity)
        .put("nowPlaying", presence.nowPlaying)
        .put("here", presence.here)
        .put("zone", presence.zone)
        .put("seen", presence.seen)
        .put("calendarStatus", presence.calendarStatus)
        .put("calendar", presence.calendar);
}

static void writeJson(JsonWriter& writer, const Arrival& arrival) {
    Entries{writer}.put("partnerName", arrival.partnerName).put("status", arrival.status).put("at", arrival.at);
}

static void writeJson(JsonWriter& writer, const KeptHere& kept) {
    writer.string(std::visit(
        Overloaded{[](const KeptHere::No&) { return "no"; }, [](const KeptHere::Starting&) { return "starting"; },
                   [](const KeptHere::Kept&) { return "kept"; }, [](const KeptHere::Failed&) { return "failed"; }},
        kept.value));
}

static void writeJson(JsonWriter& writer, const std::vector<std::string>& texts) {
    writer.openArray();
    for (const auto& text : texts) writer.string(text);
    writer.closeArray();
}

static void writeJson(JsonWriter& writer, const AppState& state) {
    Entries{writer}
        .put("session", sessionOf(state))
        .put("token", state.token ? std::optional{state.token->redacted()} : std::nullopt)
        .put("server", state.serverURL)
        .put("keptHere", state.keptHere)
        .put("roomsNearby", namesOf(state.roomsNearby))
        .put("connection", nameOf(state.connection))
        .put("items", state.board.items.size())
        .put("pendingBatches", state.pendingBatches)
        .put("unstoredBatches", state.unstoredBatches.size())
        .put("lastSendQueued", state.lastSendQueued)
        .put("arriving", state.arriving)
        .put("falling", state.falling)
        .put("showsBoardOnDesktop", state.showsBoardOnDesktop)
        .put("partnerNames", state.partnerNames)
        .put("presence", state.presence)
        .put("pairing", state.pairing)
        .put("arrival", state.arrival)
        .put("onboarding", state.onboarding)
        .put("myDisplayName", state.myDisplayName)
        .put("partnerDisplayName", state.partnerDisplayName)
        .put("isSettling", state.isSettling)
        .put("boardLink", state.boardLink)
        .put("shareCode", state.shareCode)
        .put("isMintingCode", state.isMintingCode)
        .put("connectionRejected", state.connectionRejected)
        .put("keychainLocked", state.keychainLocked)
        .put("lastBlockRang", state.lastBlockRang)
        .put("contactsAccess", state.contactsAccess)
        .put("secretPlace", state.secretPlace)
        .put("notificationPermission", state.notificationPermission)
        .put("notice", state.notice);
}

std::string statusJson(const AppState& state) {
    std::string text;
    JsonWriter writer{text};
    writeJson(writer, state);
    if (!writer.finish()) fatal("the application's state has no JSON");
    return text;
}

} // namespace lumaro
