// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/DayText.h"

#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace lumaro {
namespace {

using std::chrono::year_month_day;

/// More is no day, and is not looked at.
constexpr std::size_t longestText = 100;
constexpr std::size_t fewestLetters = 3;
/// The 29th of February is at most so many years away.
constexpr int mostYearsAway = 8;

struct Piece {
    std::string word; ///< empty for a number
    int number = 0;
    std::size_t digits = 0;
    bool hasDot = false; ///< behind it
};

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isBetween(char character) {
    return std::string_view{" ,./-\t"}.contains(character);
}

std::vector<Piece> piecesOf(std::string_view text) {
    std::vector<Piece> pieces;
    std::size_t at = 0;
    while (at < text.size()) {
        if (isBetween(text[at])) {
            if (text[at] == '.' && !pieces.empty()) pieces.back().hasDot = true;
            ++at;
            continue;
        }
        Piece piece;
        if (isDigit(text[at])) {
            for (; at < text.size() && isDigit(text[at]); ++at, ++piece.digits) {
                if (piece.digits < 5) piece.number = piece.number * 10 + (text[at] - '0');
            }
        } else {
            while (at < text.size() && !isDigit(text[at]) && !isBetween(text[at])) piece.word += text[at++];
        }
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

// Words between the parts of a date, in the languages that write them, and the endings of numbers.
bool isFiller(std::string_view word) {
    constexpr std::array<std::string_view, 14> fillers{"of", "the", "on", "de", "den", "der", "am",
                                                       "le", "el",  "il", "st", "nd",  "rd",  "th"};
    return std::ranges::find(fillers, word) != fillers.end();
}

bool means(std::string_view word, const std::vector<std::string>& names, bool isWhole) {
    return std::ranges::any_of(names, [&](const std::string& name) {
        const std::string folds = folded(name);
        std::string_view known = folds;
        while (known.ends_with('.')) known.remove_suffix(1);
        return word == known || (!isWhole && word.size() >= fewestLetters && known.starts_with(word));
    });
}

// Which of the lists a word is in, counted from 1: by its whole name first, since one may begin like another.
template <std::size_t Count>
std::optional<unsigned> which(std::string_view word, const std::array<std::vector<std::string>, Count>& lists) {
    for (const bool isWhole : {true, false}) {
        for (std::size_t i = 0; i < Count; ++i) {
            if (means(word, lists.at(i), isWhole)) return static_cast<unsigned>(i + 1);
        }
    }
    return std::nullopt;
}

struct Found {
    std::vector<Piece> numbers;
    std::optional<unsigned> month;
    std::optional<unsigned> weekday;
    std::optional<int> daysAway;
};

std::optional<Found> sorted(std::vector<Piece> pieces, const DayWords& words) {
    Found found;
    for (auto& piece : pieces) {
        if (piece.word.empty()) {
            found.numbers.push_back(std::move(piece));
        } else if (means(piece.word, words.today, true)) {
            found.daysAway = 0;
        } else if (means(piece.word, words.tomorrow, true)) {
            found.daysAway = 1;
        } else if (means(piece.word, words.dayAfterTomorrow, true)) {
            found.daysAway = 2;
        } else if (const auto weekday = which(piece.word, words.weekdays); weekday && !found.weekday) {
            found.weekday = weekday;
        } else if (const auto month = which(piece.word, words.months); month && !found.month) {
            found.month = month;
        } else if (!isFiller(piece.word)) {
            return std::nullopt;
        }
    }
    return found;
}

struct Parts {
    std::optional<int> year;
    int month = 0;
    int day = 0;
};

std::optional<Parts> partsOf(const Found& found, bool isMonthFirst) {
    auto numbers = found.numbers;
    Parts parts;
    const auto isYear = [](const Piece& piece) { return piece.digits == 4; };
    if (found.month) {
        parts.month = static_cast<int>(*found.month);
        if (numbers.size() == 2 && isYear(numbers[0])) std::swap(numbers[0], numbers[1]);
        if (numbers.empty() || numbers.size() > 2 || numbers[0].digits > 2) return std::nullopt;
        parts.day = numbers[0].number;
        if (numbers.size() == 2) parts.year = numbers[1].digits <= 2 ? 2000 + numbers[1].number : numbers[1].number;
    } else {
        if (numbers.size() < 2 || numbers.size() > 3) return std::nullopt;
        if (isYear(numbers[0])) { // as ISO 8601 has it
            if (numbers.size() != 3) return std::nullopt;
            parts = {numbers[0].number, numbers[1].number, numbers[2].number};
        } else {
            const bool isSwapped = isMonthFirst && !numbers[0].hasDot && numbers[0].number <= 12;
            parts.day = numbers[isSwapped ? 1 : 0].number;
            parts.month = numbers[isSwapped ? 0 : 1].number;
            if (numbers.size() == 3) parts.year = numbers[2].digits <= 2 ? 2000 + numbers[2].number : numbers[2].number;
        }
    }
    const bool isLong = std::ranges::any_of(numbers, [](const Piece& piece) { return piece.digits > 4; });
    return isLong ? std::nullopt : std::optional{parts};
}

year_month_day dated(int year, const Parts& parts) {
    return {std::chrono::year{year}, std::chrono::month{static_cast<unsigned>(parts.month)},
            std::chrono::day{static_cast<unsigned>(parts.day)}};
}

std::expected<year_month_day, DayFault> dayOf(const Parts& parts, year_month_day today) {
    if (parts.month > 12 || parts.day > 31) return std::unexpected(DayFault::noSuchDay);
    const int first = parts.year.value_or(static_cast<int>(today.year()));
    const int last = parts.year ? first : first + mostYearsAway;
    for (int year = first; year <= last; ++year) {
        const auto day = dated(year, parts);
        if (day.ok() && (parts.year || day >= today)) return day;
    }
    return std::unexpected(DayFault::noSuchDay);
}

unsigned weekdayOf(year_month_day day) {
    return std::chrono::weekday{std::chrono::sys_days{day}}.iso_encoding();
}

// Takes a number of up to so many digits off the text.
std::optional<int> takeDigits(std::string_view& text, std::size_t most) {
    int number = 0;
    std::size_t count = 0;
    for (; count < text.size() && count < most && isDigit(text[count]); ++count)
        number = number * 10 + text[count] - '0';
    text.remove_prefix(count);
    return count == 0 ? std::nullopt : std::optional{number};
}

} // namespace

std::expected<year_month_day, DayFault> parseDay(std::string_view text, const DayWords& words, year_month_day today) {
    if (text.size() > longestText) return std::unexpected(DayFault::notADay);
    const auto found = sorted(piecesOf(folded(text)), words);
    if (!found) return std::unexpected(DayFault::notADay);
    const std::chrono::sys_days from{today};
    if (found->numbers.empty() && !found->month) {
        if (found->daysAway) return year_month_day{from + std::chrono::days{*found->daysAway}};
        if (!found->weekday) return std::unexpected(DayFault::notADay);
        const unsigned ahead = (*found->weekday + 6 - weekdayOf(today)) % 7 + 1;
        return year_month_day{from + std::chrono::days{ahead}};
    }
    const auto parts = partsOf(*found, words.isMonthFirst);
    if (!parts || found->daysAway) return std::unexpected(DayFault::notADay);
    const auto day = dayOf(*parts, today);
    if (day && found->weekday && weekdayOf(*day) != *found->weekday) return std::unexpected(DayFault::otherWeekday);
    return day;
}

std::expected<std::chrono::minutes, TimeFault> parseTimeOfDay(std::string_view text) {
    if (text.size() > longestText) return std::unexpected(TimeFault::notATime);
    std::string plain = folded(text);
    std::erase_if(plain, [](char character) { return character == ' '; });
    std::string_view left = plain;
    const auto hour = takeDigits(left, 2);
    if (!hour) return std::unexpected(TimeFault::notATime);
    int minute = 0;
    if (!left.empty() && std::string_view{":.h"}.contains(left.front())) {
        const bool mayStandAlone = left.front() == 'h';
        left.remove_prefix(1);
        const auto digits = left.size();
        const auto taken = takeDigits(left, 2);
        if (taken ? digits - left.size() != 2 : !mayStandAlone) return std::unexpected(TimeFault::notATime);
        minute = taken.value_or(0);
    }
    std::string half{left};
    std::erase(half, '.');
    const bool isHalf = half == "am" || half == "pm";
    if (!half.empty() && !isHalf) return std::unexpected(TimeFault::notATime);
    if (*hour > (isHalf ? 12 : 23) || (isHalf && *hour == 0) || minute > 59) {
        return std::unexpected(TimeFault::noSuchTime);
    }
    const int turned = isHalf ? *hour % 12 + (half == "pm" ? 12 : 0) : *hour;
    return std::chrono::hours{turned} + std::chrono::minutes{minute};
}

} // namespace lumaro
