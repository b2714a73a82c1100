// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

enum class ContactsAccess : std::uint8_t { notDetermined, denied, authorized, limited };

constexpr std::array<std::string_view, 4> namesOf(ContactsAccess) {
    return {"notDetermined", "denied", "authorized", "limited"};
}

/// What this computer knows of the person who uses it.
struct OwnCard {
    std::string fullName; ///< empty when it is not known
    std::optional<std::string> picturePath;

    bool operator==(const OwnCard&) const = default;
};

/// The person's own card. Used on the main thread.
class ContactCard {
public:
    ContactCard() = default;
    ContactCard(const ContactCard&) = delete;
    ContactCard& operator=(const ContactCard&) = delete;
    virtual ~ContactCard() = default;

    virtual ContactsAccess access() = 0;
    /// As it is now; empty where there is no access.
    virtual OwnCard ownCard() = 0;
};

} // namespace lumaro
