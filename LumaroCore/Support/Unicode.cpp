// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Unicode.h"

#include <utf8proc.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace lumaro {
namespace {

using Bytes = const utf8proc_uint8_t*;

// Controls that break lines or leave a gap; other white space has a category of its own.
bool isSpacingControl(char32_t character) {
    return (character >= U'\t' && character <= U'\r') || character == 0x85;
}

} // namespace

CharacterClass classOf(char32_t character) {
    switch (utf8proc_category(static_cast<utf8proc_int32_t>(character))) {
    case UTF8PROC_CATEGORY_ND: return CharacterClass::digit;
    case UTF8PROC_CATEGORY_LU: return CharacterClass::upperCaseLetter;
    case UTF8PROC_CATEGORY_LL:
    case UTF8PROC_CATEGORY_LT:
    case UTF8PROC_CATEGORY_LM:
    case UTF8PROC_CATEGORY_LO: return CharacterClass::otherLetter;
    case UTF8PROC_CATEGORY_ZS:
    case UTF8PROC_CATEGORY_ZL:
    case UTF8PROC_CATEGORY_ZP: return CharacterClass::space;
    default: return isSpacingControl(character) ? CharacterClass::space : CharacterClass::other;
    }
}

std::optional<int> digitValue(char32_t character) {
    if (classOf(character) != CharacterClass::digit) return std::nullopt;
    // Digits of a script stand in a row of ten, and a row may follow another: the row's start is found from its end.
    int before = 0;
    while (before < 50 && classOf(character - static_cast<char32_t>(before) - 1) == CharacterClass::digit) ++before;
    return before % 10;
}

std::optional<char32_t> takeCharacter(std::string_view& text) {
    if (text.empty()) return std::nullopt;
    utf8proc_int32_t character = 0;
    const auto size =
        utf8proc_iterate(reinterpret_cast<Bytes>(text.data()), static_cast<utf8proc_ssize_t>(text.size()), &character);
    if (size <= 0) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(size));
    return static_cast<char32_t>(character);
}

bool isInvisible(char32_t character) {
    constexpr char32_t blankBraille = 0x2800; // a symbol to Unicode
    const auto* const property = utf8proc_get_property(static_cast<utf8proc_int32_t>(character));
    return classOf(character) == CharacterClass::space || property->category == UTF8PROC_CATEGORY_CC ||
           property->ignorable != 0 || character == blankBraille;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    auto rest = text;
    utf8proc_int32_t state = 0;
    char32_t before = 0;
    for (std::size_t begun = 0;;) {
        const auto taken = text.size() - rest.size();
        const auto character = takeCharacter(rest);
        if (!character) return text.substr(0, taken);
        const bool begins =
            taken == 0 || utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(before),
                                                           static_cast<utf8proc_int32_t>(*character), &state);
        if (begins && begun++ == count) return text.substr(0, taken);
        before = *character;
    }
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        if (!takeCharacter(text)) return false;
    }
    return true;
}

std::string folded(std::string_view text) {
    utf8proc_uint8_t* mapped = nullptr;
    const auto options =
        static_cast<utf8proc_option_t>(UTF8PROC_COMPAT | UTF8PROC_DECOMPOSE | UTF8PROC_CASEFOLD | UTF8PROC_STRIPMARK);
    const auto size = utf8proc_map(reinterpret_cast<Bytes>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                                   &mapped, options);
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner{mapped, &std::free};
    return size <= 0 ? std::string{}
                     : std::string{reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(size)};
}

std::string lowered(std::string_view text) {
    std::string lower;
    while (const auto character = takeCharacter(text)) {
        std::array<utf8proc_uint8_t, 4> bytes{};
        const auto size =
            utf8proc_encode_char(utf8proc_tolower(static_cast<utf8proc_int32_t>(*character)), bytes.data());
        lower.append(bytes.begin(), bytes.begin() + size);
    }
    return lower;
}

bool isBlank(std::string_view text) {
    while (const auto character = takeCharacter(text)) {
        if (!isInvisible(*character)) return false;
    }
    return text.empty();
}

std::string_view trimmed(std::string_view text) {
    const auto isSpace = [](std::optional<char32_t> character) {
        return character && classOf(*character) == CharacterClass::space;
    };
    for (auto rest = text; isSpace(takeCharacter(rest));) text = rest;
    while (!text.empty()) {
        auto start = text.size() - 1;
        while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U) --start;
        auto last = text.substr(start);
        if (!isSpace(takeCharacter(last)) || !last.empty()) break;
        text = text.substr(0, start);
    }
    return text;
}

} // namespace lumaro
