// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/WrittenMoment.h"

#include <algorithm>
#include <cstddef>

namespace lumaro {
namespace {

// Takes one of these characters off the text, if it stands there.
bool takeSeparator(std::string_view& text, std::string_view characters) {
    if (text.empty() || !characters.contains(text.front())) return false;
    text.remove_prefix(1);
    return true;
}

// Takes a number of so many digits off the text.
std::optional<int> takeNumber(std::string_view& text, std::size_t minDigits, std::size_t maxDigits) {
    std::size_t count = 0;
    int number = 0;
    while (count < std::min(maxDigits, text.size()) && text[count] >= '0' && text[count] <= '9') {
        number = number * 10 + (text[count] - '0');
        ++count;
    }
    text.remove_prefix(count);
    return count < minDigits ? std::nullopt : std::optional{number};
}

std::optional<std::chrono::year_month_day> takeDay(std::string_view& text) {
    const auto year = takeNumber(text, 4, 4);
    if (!year || !takeSeparator(text, "-")) return std::nullopt;
    const auto month = takeNumber(text, 2, 2);
    if (!month || !takeSeparator(text, "-")) return std::nullopt;
    const auto day = takeNumber(text, 2, 2);
    if (!day) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year{*year}, std::chrono::month{static_cast<unsigned>(*month)},
                                           std::chrono::day{static_cast<unsigned>(*day)}};
    return date.ok() ? std::optional{date} : std::nullopt;
}

std::optional<std::chrono::seconds> takeTime(std::string_view& text) {
    const auto hour = takeNumber(text, 1, 2);
    if (!hour || !takeSeparator(text, ":")) return std::nullopt;
    const auto minute = takeNumber(text, 2, 2);
    const auto second = takeSeparator(text, ":") ? takeNumber(text, 2, 2) : std::optional{0};
    if (!minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    return std::chrono::hours{*hour} + std::chrono::minutes{*minute} + std::chrono::seconds{*second};
}

} // namespace

std::optional<WrittenMoment> parseWrittenMoment(std::string_view text) {
    const auto day = takeDay(text);
    if (!day) return std::nullopt;
    const auto time = takeSeparator(text, " T") ? takeTime(text) : std::optional{std::chrono::seconds{}};
    const bool isUtc = takeSeparator(text, "Z");
    if (!time || !text.empty()) return std::nullopt;
    return WrittenMoment{*day, *time, isUtc};
}

} // namespace lumaro
