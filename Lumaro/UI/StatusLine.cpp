// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/StatusLine.h"

#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/Overloaded.h"

#include <variant>

namespace lumaro {
namespace {

QString partnerLine(const AppState& state) {
    const bool isHere = state.presence.isPartnerOnline;
    if (!state.partnerDisplayName.empty()) {
        return (isHere ? QStringLiteral("%1 is here") : QStringLiteral("%1 is away"))
            .arg(qText(state.partnerDisplayName));
    }
    return isHere ? QStringLiteral("they're here") : QStringLiteral("waiting for your person");
}

QString offlineLine(std::size_t waiting) {
    if (waiting == 0) return QStringLiteral("offline");
    if (waiting == 1) return QStringLiteral("offline · 1 change waiting");
    return QStringLiteral("offline · %1 changes waiting").arg(waiting);
}

} // namespace

QString statusLine(const AppState& state) {
    if (state.secretPlace == SecretPlace::asking) return QStringLiteral("there's a question for you");
    if (state.keychainLocked) return QStringLiteral("the keychain didn't open");
    if (state.isRestoring) return QStringLiteral("one moment…");
    if (!state.token) {
        return state.wasPaired ? QStringLiteral("this mac is off the board") : QStringLiteral("no board yet");
    }
    if (state.connectionRejected) return QStringLiteral("the room no longer knows this mac");
    return std::visit(Overloaded{[&](const ConnectionState::Connected&) { return partnerLine(state); },
                                 [](const ConnectionState::Idle&) { return QStringLiteral("connecting…"); },
                                 [](const ConnectionState::Connecting&) { return QStringLiteral("connecting…"); },
                                 [&](const ConnectionState::Waiting&) { return offlineLine(state.pendingBatches); },
                                 [&](const ConnectionState::Stopped&) { return offlineLine(state.pendingBatches); },
                                 [](const ConnectionState::Rejected&) {
                                     return QStringLiteral("the room no longer knows this mac");
                                 }},
                      state.connection.value);
}

} // namespace lumaro
