// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace lumaro {

/// A day and a time of day as people write them. Which instant that is depends on the time zone, which the rules do not
/// know: whoever reads it says.
struct WrittenMoment {
    std::chrono::year_month_day day;
    std::chrono::seconds time{}; ///< since midnight, under a day
    bool isUtc = false;

    bool operator==(const WrittenMoment&) const = default;
};

/// "2026-06-01", "2026-06-01 8:30" or "2026-06-01T18:30:15"; with a "Z" behind it is in UTC.
std::optional<WrittenMoment> parseWrittenMoment(std::string_view text);

} // namespace lumaro
