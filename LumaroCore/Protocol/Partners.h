// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/Support/Fields.h"

#include <optional>
#include <string>
#include <tuple>

namespace lumaro {

/// Any of the two slots; travels as the list of those in it, `a` first.
struct PartnerSet {
    bool a = false;
    bool b = false;

    static constexpr PartnerSet both() { return {true, true}; }
    constexpr bool contains(PartnerID slot) const { return slot == PartnerID::a ? a : b; }
    constexpr void insert(PartnerID slot) { (slot == PartnerID::a ? a : b) = true; }
    constexpr bool isEmpty() const { return !a && !b; }

    constexpr bool operator==(const PartnerSet&) const = default;
};

/// The names of the two people, as far as they are known.
struct SlotNames {
    std::optional<std::string> a;
    std::optional<std::string> b;

    const std::optional<std::string>& of(PartnerID slot) const { return slot == PartnerID::a ? a : b; }
    std::optional<std::string>& of(PartnerID slot) { return slot == PartnerID::a ? a : b; }

    static constexpr auto fields() { return std::tuple{Field{"a", &SlotNames::a}, Field{"b", &SlotNames::b}}; }
    bool operator==(const SlotNames&) const = default;
};

} // namespace lumaro
