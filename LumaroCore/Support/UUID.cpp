// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/UUID.h"

#include <bit>
#include <cstring>

namespace lumaro {
namespace {

constexpr bool isHyphenPlace(std::size_t place) {
    return place == 8 || place == 13 || place == 18 || place == 23;
}

constexpr int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Both digits of every byte, so that writing is one look-up a byte.
constexpr auto digitPairs = [] {
    std::array<std::array<char, 2>, 256> pairs{};
    constexpr std::string_view digits = "0123456789abcdef";
    for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {digits[i >> 4], digits[i & 15]};
    return pairs;
}();

// The value of a digit by its character, -1 for every other.
constexpr auto digitValues = [] {
    std::array<int, 256> values{};
    for (std::size_t i = 0; i < values.size(); ++i) values[i] = digitValue(static_cast<char>(i));
    return values;
}();

} // namespace

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textSize) return std::nullopt;
    UUID id;
    int bad = 0;
    std::size_t place = 0;
    for (auto& byte : id.bytes) {
        if (isHyphenPlace(place)) bad |= -static_cast<int>(text[place++] != '-');
        const int high = digitValues[static_cast<unsigned char>(text[place])];
        const int low = digitValues[static_cast<unsigned char>(text[place + 1])];
        bad |= high | low;
        byte = static_cast<std::uint8_t>((high << 4) | low);
        place += 2;
    }
    if (bad < 0) return std::nullopt;
    return id;
}

std::array<char, UUID::textSize> UUID::lowerText() const {
    std::array<char, textSize> text{};
    std::size_t place = 0;
    for (const auto byte : bytes) {
        if (isHyphenPlace(place)) text[place++] = '-';
        std::memcpy(text.data() + place, digitPairs[byte].data(), 2);
        place += 2;
    }
    return text;
}

std::string UUID::lowerString() const {
    const auto text = lowerText();
    return {text.data(), text.size()};
}

std::string UUID::upperString() const {
    std::string text = lowerString();
    for (char& c : text) {
        if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 'a' + 'A');
    }
    return text;
}

void UUID::hashInto(Hasher& hasher) const {
    const auto halves = std::bit_cast<std::array<std::uint64_t, 2>>(bytes);
    hasher.add(halves[0]);
    hasher.add(halves[1]);
}

} // namespace lumaro
