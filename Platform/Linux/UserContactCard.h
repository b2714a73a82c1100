// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/ContactCard.h"

#include <string>

namespace lumaro {

/// What the system knows of its user: the full name of the account, and the picture that login screens show.
class UserContactCard final : public ContactCard {
public:
    struct Account {
        std::string login;
        std::string gecos; ///< the account's comment: the full name, then perhaps a comma and more
        std::string home;
    };

    explicit UserContactCard(Account account) : account_(std::move(account)) {}
    /// The account that this program runs under.
    static Account ownAccount();

    ContactsAccess access() override { return ContactsAccess::authorized; }
    OwnCard ownCard() override;

private:
    Account account_;
};

} // namespace lumaro
