// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/AppFace.h"

#include "DesignSystem/FaceProvider.h"
#include "DesignSystem/Words.h"
#include "Lumaro/UI/StatusLine.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <variant>

namespace lumaro {
namespace {

Stage stageOf(const AppState& state) {
    if (state.secretPlace == SecretPlace::asking) return Stage::asksForFile;
    if (state.keychainLocked) return Stage::locked;
    if (state.isRestoring) return Stage::restoring;
    if (state.token) {
        if (state.connectionRejected) return Stage::refused;
        return state.onboarding == OnboardingStep::bringThemOver ? Stage::bringThemOver : Stage::board;
    }
    if (state.wasPaired) return Stage::offBoard;
    // Nobody can be brought over to no board.
    const bool hasBegun = state.onboarding && *state.onboarding != OnboardingStep::welcome;
    return hasBegun ? Stage::makeItYours : Stage::welcome;
}

bool isOffline(const ConnectionState& connection) {
    return !std::holds_alternative<ConnectionState::Connected>(connection.value);
}

QString nameOr(const std::optional<std::string>& name, const QString& otherwise) {
    return name && !name->empty() ? qText(*name) : otherwise;
}

void takePairing(AppFace& face, const PairingPhase& pairing) {
    std::visit(
        Overloaded{[](const PairingPhase::Idle&) {}, [&](const PairingPhase::Working&) { face.isWorking = true; },
                   [&](const PairingPhase::Choosing& choosing) {
                       face.isChoosing = true;
                       face.firstName = nameOr(choosing.names.a, Words::tr("the one who began"));
                       face.secondName = nameOr(choosing.names.b, Words::tr("the one who came along"));
                       if (choosing.suggested) face.suggested = *choosing.suggested == PartnerID::a ? 0 : 1;
                   },
                   [&](const PairingPhase::Asking& asking) {
                       face.inviteQuestion = {.isAsked = true,
                                              .askedBoardName = nameOr(asking.inviter, Words::tr("someone")),
                                              .ownBoardName = asking.leavesBoard ? face.partnerName : QString{},
                                              .server = QUrl{qText(asking.server)}.host(),
                                              .isByCode = asking.isByCode,
                                              .isPartnerOnOwn = face.hasPartner,
                                              .items = static_cast<int>(std::min<std::size_t>(asking.items, 9999))};
                   },
                   [](const PairingPhase::NeedsServer&) {},
                   [&](const PairingPhase::Failed& failed) { face.failure = Words::of(failed.message); }},
        pairing.value);
}

QString spanText(Microseconds left) {
    const auto minutes = std::chrono::ceil<std::chrono::minutes>(left).count();
    if (minutes <= 1) return Words::tr("works for one more minute");
    return Words::tr("works for %n more minutes", nullptr, static_cast<int>(std::min<std::int64_t>(minutes, 9999)));
}

void takeCode(AppFace& face, const ShareCode& code, Instant now) {
    const auto digits = qText(code.code);
    const auto middle = digits.size() / 2;
    face.isCodeOver = now >= code.expiresAt;
    face.code = digits.left(middle) + QLatin1Char{' '} + digits.mid(middle);
    face.codeWorks = face.isCodeOver ? Words::tr("that code timed out") : spanText(code.expiresAt - now);
}

QString greetingOf(const Arrival& arrival, const QString& partner) {
    switch (arrival.status) {
    case JoinStatus::joined: return Words::tr("%1 is on the board 💌").arg(partner);
    case JoinStatus::rejoined: return Words::tr("welcome back — %1 is on the board 💌").arg(partner);
    case JoinStatus::already: return Words::tr("you're on the board with %1 already 💌").arg(partner);
    }
    std::unreachable();
}

} // namespace

QString AppFace::stageName() const {
    return qText(nameOf(stage));
}

bool AppFace::needsPerson() const {
    return isChoosing || !failure.isEmpty() || (stage != Stage::board && stage != Stage::restoring);
}

AppFace appFace(const AppState& state, Instant now, bool isRetrying) {
    AppFace face;
    face.stage = stageOf(state);
    face.status = statusLine(state, isRetrying);
    face.isOnBoard = state.token && !state.connectionRejected;
    face.isOffline = face.isOnBoard && isOffline(state.connection);
    face.waiting = static_cast<int>(std::min<std::size_t>(state.pendingBatches, 9999));
    face.isPartnerHere = state.presence.isPartnerOnline;
    face.hasPartner = face.isPartnerHere || !state.partnerDisplayName.empty();
    face.myName = qText(state.myDisplayName);
    face.partnerName = nameOr(state.partnerDisplayName, Words::tr("your person"));
    takePairing(face, state.pairing);
    // What was given out for a board that this device is not on any more is of no use to anybody.
    if (face.isOnBoard && state.shareCode) takeCode(face, *state.shareCode, now);
    face.isMintingCode = state.isMintingCode;
    if (face.isOnBoard && state.boardLink) face.link = qText(state.boardLink->url);
    if (state.arrival)
        face.greeting = greetingOf(*state.arrival, nameOr(state.arrival->partnerName, Words::tr("your person")));
    face.showsOnDesktop = state.showsBoardOnDesktop;
    face.sharesSeen = state.sharesSeen;
    face.background = qText(nameOf(state.board.background));
    face.isPlaceFree = state.token && state.paired && !state.paired->contains(other(state.token->slot));
    face.myPicture = state.myPicturePath ? FaceProvider::urlOf(qText(*state.myPicturePath)) : QUrl{};
    return face;
}

} // namespace lumaro
