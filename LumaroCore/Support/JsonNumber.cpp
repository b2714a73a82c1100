// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/JsonNumber.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace lumaro {
namespace {

// A number's text taken apart: sign, digits before and after the point, and the exponent.
struct NumberParts {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
    std::int64_t exponent = 0;
};

std::size_t countDigits(std::string_view text) {
    const auto end = text.find_first_not_of("0123456789");
    return end == std::string_view::npos ? text.size() : end;
}

std::string_view takeDigits(std::string_view& text) {
    const auto digits = text.substr(0, countDigits(text));
    text.remove_prefix(digits.size());
    return digits;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || !characters.contains(text.front())) return false;
    text.remove_prefix(1);
    return true;
}

// Exponents beyond any text's length are all alike: the digits they move are all zeros or all there is.
constexpr std::int64_t exponentLimit = std::int64_t{1} << 40;

std::optional<std::int64_t> takeExponent(std::string_view& text) {
    if (!takeOneOf(text, "eE")) return 0;
    const bool negative = text.starts_with('-');
    takeOneOf(text, "+-");
    const auto digits = takeDigits(text);
    if (digits.empty()) return std::nullopt;
    std::int64_t exponent = 0;
    for (const char digit : digits) exponent = std::min(exponentLimit, exponent * 10 + (digit - '0'));
    return negative ? -exponent : exponent;
}

std::optional<NumberParts> splitNumber(std::string_view text) {
    NumberParts parts;
    parts.negative = takeOneOf(text, "-");
    parts.whole = takeDigits(text);
    if (parts.whole.empty() || (parts.whole.size() > 1 && parts.whole.front() == '0')) return std::nullopt;
    if (takeOneOf(text, ".")) {
        parts.fraction = takeDigits(text);
        if (parts.fraction.empty()) return std::nullopt;
    }
    const auto exponent = takeExponent(text);
    if (!exponent || !text.empty()) return std::nullopt;
    parts.exponent = *exponent;
    return parts;
}

// The double as thousandths when that is exact and has at most 15 digits. Two decimals of at most 15 digits never
// share a double, so the digits of that count, less its trailing zeros, are the shortest text there is.
std::optional<std::int64_t> asThousandths(double value) {
    const double thousandths = std::nearbyint(value * 1000);
    if (!(std::abs(thousandths) < 1e15) || thousandths / 1000 != value) return std::nullopt;
    return static_cast<std::int64_t>(thousandths);
}

} // namespace

ParsedNumber parseNumber(std::string_view token) {
    const auto parts = splitNumber(token);
    if (!parts) return {};

    // The point stands behind digit `point` of all digits; a negative or larger place means zeros in between.
    const auto digitCount = parts->whole.size() + parts->fraction.size();
    const auto digit = [&](std::size_t i) {
        return i < parts->whole.size() ? parts->whole[i] : parts->fraction[i - parts->whole.size()];
    };
    std::size_t first = 0;
    while (first < digitCount && digit(first) == '0') ++first;
    if (first == digitCount) return {NumberForm::whole, 0};
    std::size_t last = digitCount;
    while (digit(last - 1) == '0') --last;
    const auto point = static_cast<std::int64_t>(parts->whole.size()) + parts->exponent;
    if (point < static_cast<std::int64_t>(last)) return {NumberForm::fractional};
    if (point - static_cast<std::int64_t>(first) > 19) return {NumberForm::large};

    // At most 19 digits: below 10^19, which an unsigned 64-bit count holds.
    std::uint64_t magnitude = 0;
    for (auto i = first; i < static_cast<std::size_t>(point); ++i) {
        magnitude = magnitude * 10 + (i < last ? static_cast<std::uint64_t>(digit(i) - '0') : 0);
    }
    constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (magnitude > largest + (parts->negative ? 1 : 0)) return {NumberForm::large};
    return {NumberForm::whole, static_cast<std::int64_t>(parts->negative ? 0 - magnitude : magnitude)};
}

char* writeDouble(char* out, double value) {
    char* const end = out + maxDoubleText;
    if (value == 0 && std::signbit(value)) return std::to_chars(out, end, value).ptr;
    if (std::abs(value) < 1e15 && std::trunc(value) == value) {
        return std::to_chars(out, end, static_cast<std::int64_t>(value)).ptr;
    }
    const auto thousandths = asThousandths(value);
    if (!thousandths) return std::to_chars(out, end, value).ptr;
    if (*thousandths < 0) *out++ = '-';
    const auto magnitude = static_cast<std::uint64_t>(std::abs(*thousandths));
    out = std::to_chars(out, end - 1, magnitude / 1000).ptr;
    const auto fraction = static_cast<unsigned>(magnitude % 1000);
    *out++ = '.';
    *out++ = static_cast<char>('0' + fraction / 100);
    if (fraction % 100 == 0) return out;
    *out++ = static_cast<char>('0' + fraction / 10 % 10);
    if (fraction % 10 == 0) return out;
    *out++ = static_cast<char>('0' + fraction % 10);
    return out;
}

std::string textOfDouble(double value) {
    std::array<char, maxDoubleText> text{};
    return {text.data(), writeDouble(text.data(), value)};
}

} // namespace lumaro
