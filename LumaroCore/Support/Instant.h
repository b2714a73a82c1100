// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

namespace lumaro {

using Microseconds = std::chrono::microseconds;

/// A point in time, in whole microseconds since 1970-01-01 UTC.
using Instant = std::chrono::sys_time<Microseconds>;

/// `instant + span`, held at the ends of the range: instants and spans arrive from peers, and any of them may be
/// extreme.
constexpr Instant saturatingAdd(Instant instant, Microseconds span) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(instant.time_since_epoch().count(), span.count(), &sum)) {
        return Instant{Microseconds{sum}};
    }
    return span.count() > 0 ? Instant::max() : Instant::min();
}

/// The span from `start` to `end` in seconds; exact to the microsecond for spans under 285 years.
constexpr double secondsBetween(Instant start, Instant end) {
    std::int64_t span = 0;
    if (__builtin_sub_overflow(end.time_since_epoch().count(), start.time_since_epoch().count(), &span)) {
        span = end > start ? std::numeric_limits<std::int64_t>::max() : std::numeric_limits<std::int64_t>::min();
    }
    return static_cast<double>(span) / 1e6;
}

} // namespace lumaro
