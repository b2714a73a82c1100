// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/UserDefaults.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace lumaro {

/// Whether this person lets the partner see something of them.
enum class Consent : std::uint8_t {
    notAsked, ///< as good as no
    no,
    yes,
};

constexpr std::array<std::string_view, 3> namesOf(Consent) {
    return {"notAsked", "no", "yes"};
}

constexpr Consent consentOf(bool shares) {
    return shares ? Consent::yes : Consent::no;
}

/// As it is kept under that key.
inline Consent consentIn(const UserDefaults& defaults, std::string_view key) {
    const auto shares = defaults.boolean(key);
    return shares ? consentOf(*shares) : Consent::notAsked;
}

} // namespace lumaro
