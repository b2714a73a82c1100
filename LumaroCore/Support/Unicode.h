// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// What a character is, by its general category in Unicode.
enum class CharacterClass : std::uint8_t {
    digit,           ///< Nd
    upperCaseLetter, ///< Lu
    otherLetter,     ///< lower case, title case and letters without case
    space,           ///< white space and line breaks
    other,
};

CharacterClass classOf(char32_t character);

/// What a digit of any script counts; none for other characters.
std::optional<int> digitValue(char32_t character);

/// Takes the first character off a UTF-8 text; none at its end and where it is not UTF-8.
std::optional<char32_t> takeCharacter(std::string_view& text);

/// Whether nothing of the character is seen: white space, controls, and what Unicode has displayed as nothing.
bool isInvisible(char32_t character);

/// Whether nothing of the text is seen.
bool isBlank(std::string_view text);

/// The start of a UTF-8 text, at most so many characters as people count them (extended grapheme clusters).
std::string_view firstCharacters(std::string_view text, std::size_t count);

bool isUtf8(std::string_view text);

/// The text as it is compared: without case, accents and marks, compatible forms made one. Empty when it is not UTF-8.
std::string folded(std::string_view text);

/// The text in lower case, character by character (Unicode's simple mapping). Bytes that are not UTF-8 end it.
std::string lowered(std::string_view text);

/// The text without white space and line breaks at its ends.
std::string_view trimmed(std::string_view text);

} // namespace lumaro
