// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Membership/Invitations.h"

#include <cstdint>
#include <utility>

namespace lumaro {

Invitations::Invitations(Ports ports, InvitationState& state, Neighbours neighbours)
    : ports_(ports), state_(state), neighbours_(neighbours) {
    linkTask_ = inBackground(
        ports_.background, [keychain = keychain()] { return keychain.readBoardLink(); },
        [this](KeychainStore::Result<std::optional<BoardLink>> link) {
            if (!link || state_.boardLink) return;
            state_.boardLink = std::move(*link);
            neighbours_.announcer.changed(AppChange::invitations);
        });
}

void Invitations::mintCode() {
    if (!neighbours_.who.token) return;
    const Announcer::Update update{neighbours_.announcer};
    state_.isMintingCode = true;
    state_.codeFailure.reset();
    neighbours_.announcer.changed(AppChange::invitations);
    codeCall_ = neighbours_.service.client().createCode(*neighbours_.who.token, neighbours_.myName, [this](auto code) {
        const Announcer::Update answered{neighbours_.announcer};
        state_.isMintingCode = false;
        neighbours_.announcer.changed(AppChange::invitations);
        if (code) {
            state_.shareCode = std::move(*code);
        } else {
            state_.codeFailure = code.error().text();
            neighbours_.announcer.say(*state_.codeFailure);
        }
    });
}

void Invitations::mintLink() {
    askForLink(false);
}

// A call that is under way brings the link, or ends it.
void Invitations::checkLink() {
    if (state_.boardLink && !linksCall_) askForLink(true);
}

void Invitations::askForLink(bool isQuiet) {
    if (!neighbours_.who.token) return;
    state_.linkFailure.reset();
    linksCall_ = neighbours_.service.client().mintLink(
        *neighbours_.who.token, neighbours_.myName,
        [this, isQuiet](const std::expected<Invite, PairingFailure>& invite) {
            const auto call = std::move(linksCall_);
            const Announcer::Update update{neighbours_.announcer};
            if (!invite) return isQuiet ? void() : linkFailed(invite.error());
            if (!neighbours_.who.token) return;
            const BoardLink link{neighbours_.who.token->coupleId, invite->inviteId, invite->link};
            if (state_.boardLink != link) keepLink(link);
        });
}

void Invitations::resetLinks() {
    if (!neighbours_.who.token) return;
    state_.linkFailure.reset();
    linksCall_ = neighbours_.service.client().resetLinks(*neighbours_.who.token,
                                                         [this](const std::expected<void, PairingFailure>& reset) {
                                                             const auto call = std::move(linksCall_);
                                                             const Announcer::Update update{neighbours_.announcer};
                                                             reset ? replaced() : linkFailed(reset.error());
                                                         });
}

// A code that is on its way may have been made before the others ended.
void Invitations::replaced() {
    const Announcer::Update update{neighbours_.announcer};
    const bool isMinting = state_.isMintingCode;
    forgetCode();
    keepLink(std::nullopt);
    mintLink();
    if (isMinting) mintCode();
}

void Invitations::linkFailed(const PairingFailure& why) {
    state_.linkFailure = why.text();
    neighbours_.announcer.changed(AppChange::invitations);
    neighbours_.announcer.say(*state_.linkFailure);
}

void Invitations::keepLink(std::optional<BoardLink> link) {
    linkTask_ = inBackground(
        ports_.background,
        [keychain = keychain(), link]() mutable {
            return link ? keychain.saveBoardLink(*link) : keychain.remove(KeychainAccount::boardLink);
        },
        [this](KeychainStore::Result<void> kept) {
            if (kept) return;
            ports_.log.write(LogLevel::error, "app",
                             "the board link could not be kept (OSStatus " +
                                 std::to_string(static_cast<std::int32_t>(kept.error())) + ")");
        });
    state_.boardLink = std::move(link);
    neighbours_.announcer.changed(AppChange::invitations);
}

void Invitations::keepLinkAgain() {
    if (state_.boardLink) keepLink(state_.boardLink);
}

void Invitations::codeUsed() {
    if (!state_.shareCode) return;
    state_.shareCode.reset();
    neighbours_.announcer.changed(AppChange::invitations);
}

void Invitations::forgetCode() {
    codeCall_ = nullptr;
    linksCall_ = nullptr;
    state_.isMintingCode = false;
    state_.codeFailure.reset();
    state_.linkFailure.reset();
    state_.shareCode.reset();
    neighbours_.announcer.changed(AppChange::invitations);
}

} // namespace lumaro
