// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/PairingClients.h"
#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/Services/ContactCard.h"
#include "LumaroCore/Services/UserDefaults.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Who the two people of the board are.
struct PeopleState {
    std::string myDisplayName;
    std::string partnerDisplayName;
    std::map<PartnerID, std::string> partnerNames;
    /// Whose places on the board are taken, as the room said last; none before it has.
    std::optional<PartnerSet> paired;
    /// Of this person's contact card: a file of this computer.
    std::optional<std::string> myPicturePath;
};

/// Knows the names and faces of the two, and tells the service this person's own name.
class People {
public:
    /// All outlive this.
    struct Ports {
        UserDefaults& defaults;
        ContactCard& contacts;
        Log& log;
    };

    People(Ports ports, PeopleState& state, PairingClients& service, Announcer& announcer);
    People(const People&) = delete;
    People& operator=(const People&) = delete;
    ~People() = default;

    /// This device is on the board that the token is for.
    void adopt(const CoupleToken& token);
    /// It is on no board, or on another than before: nothing is known of a partner.
    void forget();
    void setMyName(std::string_view name);
    void learnPartnerName(const std::string& name);
    /// What the room says of who is on the board; names that it leaves out stay as they are known.
    void meet(PartnerSet paired, const std::optional<SlotNames>& names);
    /// Takes the partner's devices off the board; `then` is called when the service has done so.
    void releasePartner(std::function<void()> then);
    void refreshFaces();

private:
    void rename(PartnerID slot, const std::string& name);
    PartnerID partner() const { return other(token_ ? token_->slot : PartnerID::a); }

    Ports ports_;
    PeopleState& state_;
    PairingClients& service_;
    Announcer& announcer_;
    std::optional<CoupleToken> token_;
    PairingClient::Call nameTask_;
    PairingClient::Call releaseCall_;
};

} // namespace lumaro
