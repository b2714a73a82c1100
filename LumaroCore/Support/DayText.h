// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The words of a language for days, however they are capitalised. Each list holds all that mean one thing, long and
/// short; one that begins like a word, by three letters or more, is taken for it.
struct DayWords {
    std::array<std::vector<std::string>, 12> months;
    std::array<std::vector<std::string>, 7> weekdays; ///< Monday first
    std::vector<std::string> today;
    std::vector<std::string> tomorrow;
    std::vector<std::string> dayAfterTomorrow;
    /// "12/24" rather than "24/12".
    bool isMonthFirst = false;
};

enum class DayFault : std::uint8_t {
    notADay,      ///< not understood
    noSuchDay,    ///< the 30th of February
    otherWeekday, ///< that day is on another day of the week
};

/// The day that people mean: "2026-12-24", "24.12.2026", "24.12.", "12/24" as the language has it, "24 dec", "dec 24,
/// 2026", "thursday, 24 december 2026", "tomorrow", "friday". Without a year it is the next such day from today on; a
/// day of the week is the next one after today. Years of two digits are those from 2000.
std::expected<std::chrono::year_month_day, DayFault> parseDay(std::string_view text, const DayWords& words,
                                                              std::chrono::year_month_day today);

enum class TimeFault : std::uint8_t {
    notATime,
    noSuchTime, ///< 25:00
};

/// The time of day since midnight: "18:00", "18.30", "8", "6 pm", "6:30pm", "18h30".
std::expected<std::chrono::minutes, TimeFault> parseTimeOfDay(std::string_view text);

} // namespace lumaro
