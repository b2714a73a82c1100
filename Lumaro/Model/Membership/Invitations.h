// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/PairingClients.h"
#include "Lumaro/Model/News/Announcer.h"

#include <memory>
#include <optional>
#include <string>

namespace lumaro {

/// What brings the partner onto the board.
struct InvitationState {
    std::optional<BoardLink> boardLink;
    std::optional<ShareCode> shareCode;
    bool isMintingCode = false;
    /// Why the code asked for last did not come, for people.
    std::optional<std::string> codeFailure;
    /// Why the link asked for last did not come, for people.
    std::optional<std::string> linkFailure;
};

/// The board's link, which this device keeps among its secrets, and the code that is read over the phone.
class Invitations {
public:
    /// All outlive this; `background` may wait for a person at a keyring.
    struct Ports {
        BackgroundRunner& background;
        Log& log;
    };
    struct Neighbours {
        const Membership& membership;
        const MembershipState& who;
        const std::string& myName;
        PairingClients& service;
        Announcer& announcer;
    };

    Invitations(Ports ports, InvitationState& state, Neighbours neighbours);
    Invitations(const Invitations&) = delete;
    Invitations& operator=(const Invitations&) = delete;
    ~Invitations() = default;

    void mintCode();
    /// Asks for the board's link; those that are out stay good.
    void mintLink();
    /// Somebody looks at the link: the partner's device may have replaced it. Nothing is said when the service cannot
    /// be asked.
    void checkLink();
    /// Ends the board's links and codes, and makes another link.
    void resetLinks();
    /// The service has ended the board's links and codes: none is shown any more, and another link is made.
    void replaced();
    void keepLink(std::optional<BoardLink> link);
    /// Secrets have another place now.
    void keepLinkAgain();
    /// They were of a board that this device is not on any more.
    void forgetCode();
    /// Whoever came has used up the code that is shown. One that is on its way is another.
    void codeUsed();

private:
    void askForLink(bool isQuiet);
    void linkFailed(const PairingFailure& why);
    KeychainStore keychain() const { return neighbours_.membership.keychain(); }

    Ports ports_;
    InvitationState& state_;
    Neighbours neighbours_;
    std::unique_ptr<BackgroundRunner::Task> linkTask_;
    PairingClient::Call codeCall_;
    PairingClient::Call linksCall_;
};

} // namespace lumaro
