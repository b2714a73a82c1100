// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumaro {

/// What a countdown shows: whole days, then hours in the last two, then minutes in the last hour.
namespace Countdown {

enum class Unit : std::uint8_t { days, hours, minutes, there };

constexpr std::array<std::string_view, 4> namesOf(Unit) {
    return {"days", "hours", "minutes", "there"};
}

struct Reading {
    Unit unit = Unit::there;
    std::int64_t count = 0;            ///< rounded up, so that one minute stands until the moment itself
    std::optional<Instant> nextChange; ///< none once it is there

    bool operator==(const Reading&) const = default;
};

Reading reading(Instant target, Instant now);

/// Whether the moment came while the countdown hung, `written` for the last time before it: one for a day that had been
/// is no occasion. What was thrown lies until somebody moves the chip or writes on it.
constexpr bool isCelebrated(Instant target, Instant written, Instant now) {
    return written < target && target <= now;
}

} // namespace Countdown
} // namespace lumaro
