// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/Moments.h"

#include <array>
#include <charconv>
#include <cmath>
#include <ctime>

namespace lumaro {
namespace {

// Takes a number of so many digits off the text, and what must stand before it.
std::optional<int> takeNumber(std::string_view& text, std::string_view oneOfBefore, std::size_t digits) {
    const std::size_t skipped = oneOfBefore.empty() ? 0 : 1;
    if (text.size() < skipped + digits) return std::nullopt;
    if (skipped == 1 && oneOfBefore.find(text.front()) == std::string_view::npos) return std::nullopt;
    const char* const begin = text.data() + skipped;
    int number = 0;
    const auto [end, code] = std::from_chars(begin, begin + digits, number);
    if (code != std::errc{} || end != begin + digits || number < 0) return std::nullopt;
    text.remove_prefix(skipped + digits);
    return number;
}

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
};

std::optional<TimeOfDay> takeTime(std::string_view& text) {
    if (text.empty() || text == "Z") return TimeOfDay{};
    const auto hour = takeNumber(text, " T", 2);
    const auto minute = takeNumber(text, ":", 2);
    if (!hour || !minute) return std::nullopt;
    const bool hasSecond = !text.empty() && text.front() == ':';
    const auto second = hasSecond ? takeNumber(text, ":", 2) : 0;
    if (!second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    return TimeOfDay{*hour, *minute, *second};
}

std::string formatted(Instant instant, const char* format) {
    const auto seconds = static_cast<std::time_t>(instant.time_since_epoch().count() / 1000000);
    std::tm local{};
    std::array<char, 32> text{};
    if (localtime_r(&seconds, &local) == nullptr) return "some day";
    return {text.data(), std::strftime(text.data(), text.size(), format, &local)};
}

} // namespace

std::optional<Instant> parseMoment(std::string_view text) {
    const auto year = takeNumber(text, "", 4);
    const auto month = takeNumber(text, "-", 2);
    const auto day = takeNumber(text, "-", 2);
    if (!year || !month || !day) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    const auto time = takeTime(text);
    const bool isUtc = text == "Z";
    if (!date.ok() || !time || (!text.empty() && !isUtc)) return std::nullopt;
    std::tm fields{};
    fields.tm_year = *year - 1900;
    fields.tm_mon = *month - 1;
    fields.tm_mday = *day;
    fields.tm_hour = time->hour;
    fields.tm_min = time->minute;
    fields.tm_sec = time->second;
    fields.tm_isdst = -1;
    return Instant{std::chrono::seconds{isUtc ? timegm(&fields) : std::mktime(&fields)}};
}

std::string momentText(Instant instant) {
    return formatted(instant, "%Y-%m-%d %H:%M");
}

std::string timeOfDayText(Instant instant) {
    return formatted(instant, "%H:%M:%S");
}

std::optional<Point> parsePoint(std::string_view text) {
    Point point;
    const char* const end = text.data() + text.size();
    const auto x = std::from_chars(text.begin(), end, point.x);
    if (x.ec != std::errc{} || x.ptr == end || *x.ptr != ',') return std::nullopt;
    const auto y = std::from_chars(x.ptr + 1, end, point.y);
    if (y.ec != std::errc{} || y.ptr != end || !isFinite(point)) return std::nullopt;
    return point;
}

} // namespace lumaro
