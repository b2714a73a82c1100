// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/StatusLine.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/Overloaded.h"

#include <variant>

namespace lumaro {
namespace {

QString partnerLine(const AppState& state) {
    const bool isHere = state.presence.isPartnerOnline;
    if (!state.partnerDisplayName.empty()) {
        return (isHere ? Words::tr("%1 is here") : Words::tr("%1 is away")).arg(qText(state.partnerDisplayName));
    }
    return isHere ? Words::tr("they're here") : Words::tr("waiting for your person");
}

QString offlineLine(std::size_t waiting) {
    if (waiting == 0) return Words::tr("offline");
    if (waiting == 1) return Words::tr("offline · 1 change waiting");
    return Words::tr("offline · %n changes waiting", nullptr, static_cast<int>(waiting));
}

} // namespace

bool isRetrying(bool before, const ConnectionState& connection) {
    if (std::holds_alternative<ConnectionState::Waiting>(connection.value)) return true;
    return before && std::holds_alternative<ConnectionState::Connecting>(connection.value);
}

QString statusLine(const AppState& state, bool isRetrying) {
    if (state.secretPlace == SecretPlace::asking) return Words::tr("there's a question for you");
    if (state.keychainLocked) return Words::tr("the keychain didn't open");
    if (state.isRestoring) return Words::tr("one moment…");
    if (!state.token) {
        return state.wasPaired ? Words::tr("this mac is off the board") : Words::tr("no board yet");
    }
    if (state.connectionRejected) return Words::tr("the room no longer knows this mac");
    return std::visit(
        Overloaded{[&](const ConnectionState::Connected&) { return partnerLine(state); },
                   [](const ConnectionState::Idle&) { return Words::tr("connecting…"); },
                   [&](const ConnectionState::Connecting&) {
                       return isRetrying ? offlineLine(state.pendingBatches) : Words::tr("connecting…");
                   },
                   [&](const ConnectionState::Waiting&) { return offlineLine(state.pendingBatches); },
                   [&](const ConnectionState::Stopped&) { return offlineLine(state.pendingBatches); },
                   [](const ConnectionState::Rejected&) { return Words::tr("the room no longer knows this mac"); }},
        state.connection.value);
}

} // namespace lumaro
