// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/Moments.h"

#include "LumaroCore/Support/WrittenMoment.h"

#include <array>
#include <charconv>
#include <cmath>
#include <ctime>

namespace lumaro {
namespace {

std::string formatted(Instant instant, const char* format) {
    const auto seconds = static_cast<std::time_t>(instant.time_since_epoch().count() / 1000000);
    std::tm local{};
    std::array<char, 32> text{};
    if (localtime_r(&seconds, &local) == nullptr) return "some day";
    return {text.data(), std::strftime(text.data(), text.size(), format, &local)};
}

} // namespace

std::optional<Instant> parseMoment(std::string_view text) {
    const auto written = parseWrittenMoment(text);
    if (!written) return std::nullopt;
    if (written->isUtc) return Instant{std::chrono::sys_days{written->day} + written->time};
    const std::chrono::hh_mm_ss time{written->time};
    std::tm fields{};
    fields.tm_year = static_cast<int>(written->day.year()) - 1900;
    fields.tm_mon = static_cast<int>(static_cast<unsigned>(written->day.month())) - 1;
    fields.tm_mday = static_cast<int>(static_cast<unsigned>(written->day.day()));
    fields.tm_hour = static_cast<int>(time.hours().count());
    fields.tm_min = static_cast<int>(time.minutes().count());
    fields.tm_sec = static_cast<int>(time.seconds().count());
    fields.tm_isdst = -1;
    return Instant{std::chrono::seconds{std::mktime(&fields)}};
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
