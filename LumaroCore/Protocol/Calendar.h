// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace lumaro {

enum class CalendarStatus : std::uint8_t { notConnected, pending, connected, failed };

constexpr std::array<std::string_view, 4> namesOf(CalendarStatus) {
    return {"notConnected", "pending", "connected", "failed"};
}

struct CalendarEvent {
    std::string title;
    Instant start;
    Instant end;
    bool allDay = false;

    static constexpr auto fields() {
        return std::tuple{Field{"title", &CalendarEvent::title}, Field{"start", &CalendarEvent::start},
                          Field{"end", &CalendarEvent::end}, Field{"allDay", &CalendarEvent::allDay}};
    }
    bool operator==(const CalendarEvent&) const = default;
};

/// One person's day.
struct CalendarDay {
    std::string date; ///< ISO 8601, `2026-05-01`, in that person's time zone
    std::vector<CalendarEvent> events;
    Instant fetchedAt;

    static constexpr auto fields() {
        return std::tuple{Field{"date", &CalendarDay::date}, Field{"events", &CalendarDay::events},
                          Field{"fetchedAt", &CalendarDay::fetchedAt}};
    }
    bool operator==(const CalendarDay&) const = default;
};

} // namespace lumaro
