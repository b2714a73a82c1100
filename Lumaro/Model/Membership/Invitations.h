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
    /// Makes another link; those that are out stay good.
    void mintLink();
    /// Ends the board's link and makes another.
    void resetLinks();
    void keepLink(std::optional<BoardLink> link);
    /// Secrets have another place now.
    void keepLinkAgain();
    /// They were of a board that this device is not on any more.
    void forgetCode();

private:
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
