// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/HttpDate.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace lumaro {
namespace {

constexpr std::array<std::string_view, 7> weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                  "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::size_t dateLength = 29;

std::string digits(int value, std::size_t width) {
    auto text = std::to_string(value);
    text.insert(0, width - std::min(width, text.size()), '0');
    return text;
}

std::optional<int> number(std::string_view text) {
    int value = 0;
    const auto [end, code] = std::from_chars(text.begin(), text.end(), value);
    return code == std::errc{} && end == text.end() && value >= 0 ? std::optional{value} : std::nullopt;
}

} // namespace

std::string httpDate(Instant instant) {
    using namespace std::chrono;
    const auto day = floor<days>(instant);
    const year_month_day date{day};
    const hh_mm_ss time{floor<seconds>(instant - day)};
    std::string text{weekdays.at(weekday{day}.c_encoding())};
    text.append(", ").append(digits(static_cast<int>(static_cast<unsigned>(date.day())), 2)).append(" ");
    text.append(months.at(static_cast<unsigned>(date.month()) - 1)).append(" ");
    text.append(digits(static_cast<int>(date.year()), 4)).append(" ");
    text.append(digits(static_cast<int>(time.hours().count()), 2)).append(":");
    text.append(digits(static_cast<int>(time.minutes().count()), 2)).append(":");
    return text.append(digits(static_cast<int>(time.seconds().count()), 2)).append(" GMT");
}

std::optional<Instant> parseHttpDate(std::string_view text) {
    using namespace std::chrono;
    if (text.size() != dateLength || !text.ends_with(" GMT")) return std::nullopt;
    const auto* const month = std::ranges::find(months, text.substr(8, 3));
    const auto day = number(text.substr(5, 2));
    const auto year = number(text.substr(12, 4));
    const auto hour = number(text.substr(17, 2));
    const auto minute = number(text.substr(20, 2));
    const auto second = number(text.substr(23, 2));
    if (month == months.end() || !day || !year || !hour || !minute || !second) return std::nullopt;
    const auto index = static_cast<unsigned>(month - months.begin()) + 1;
    const year_month_day date{std::chrono::year{*year}, std::chrono::month{index},
                              std::chrono::day{static_cast<unsigned>(*day)}};
    if (!date.ok()) return std::nullopt;
    const Instant instant = sys_days{date} + hours{*hour} + minutes{*minute} + seconds{*second};
    // The form in which it would be written, and no other: separators, names and ranges in one.
    return httpDate(instant) == text ? std::optional{instant} : std::nullopt;
}

} // namespace lumaro
