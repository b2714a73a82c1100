// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Countdown.h"

#include <cmath>

namespace lumaro::Countdown {
namespace {

constexpr std::int64_t minute = 60;
constexpr std::int64_t hour = 60 * minute;
constexpr std::int64_t day = 24 * hour;

Reading inSteps(Unit unit, std::int64_t step, Instant target, double seconds) {
    const auto count = static_cast<std::int64_t>(std::ceil(seconds / static_cast<double>(step)));
    return {unit, count, saturatingAdd(target, -Microseconds{(count - 1) * step * 1'000'000})};
}

} // namespace

Reading reading(Instant target, Instant now) {
    const double seconds = secondsBetween(now, target);
    if (seconds <= 0) return {};
    if (seconds > 2 * day) return inSteps(Unit::days, day, target, seconds);
    if (seconds > hour) return inSteps(Unit::hours, hour, target, seconds);
    return inSteps(Unit::minutes, minute, target, seconds);
}

} // namespace lumaro::Countdown
