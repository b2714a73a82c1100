// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Hash.h"

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// A 128-bit identifier (RFC 4122), its bytes in written order.
struct UUID {
    std::array<std::uint8_t, 16> bytes{};

    /// Characters of the written form, 8-4-4-4-12 hexadecimal digits.
    static constexpr std::size_t textSize = 36;

    /// Reads the written form in either case; none for anything else.
    static std::optional<UUID> parse(std::string_view text);

    /// The wire form, lower case.
    std::string lowerString() const;
    /// The standard form, upper case.
    std::string upperString() const;
    /// Writes the wire form without allocating.
    std::array<char, textSize> lowerText() const;

    void hashInto(Hasher& hasher) const;
    auto operator<=>(const UUID&) const = default;
};

} // namespace lumaro
