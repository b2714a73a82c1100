// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Places/NameKey.h"

#include "LumaroCore/Support/Unicode.h"

namespace lumaro {
namespace {

bool isGap(char32_t character) {
    constexpr std::u32string_view marks = U"-\u2010\u2011\u2012\u2013\u2014/,()&";
    return marks.find(character) != std::u32string_view::npos || classOf(character) == CharacterClass::space;
}

bool isSilent(char32_t character) {
    constexpr std::u32string_view marks = U".'\"`\u2018\u2019\u201c\u201d\u02b9\u02bb\u02bc\u02be\u02bf";
    return marks.find(character) != std::u32string_view::npos;
}

// Letters that Unicode does not take for others with a mark, as they are typed without them. Empty for all others.
std::string_view plainOf(char32_t character) {
    switch (character) {
    case U'ł': return "l";
    case U'ı': return "i";
    case U'ø': return "o";
    case U'đ':
    case U'ð': return "d";
    case U'ħ': return "h";
    case U'ə': return "a";
    case U'æ': return "ae";
    case U'œ': return "oe";
    case U'þ': return "th";
    default: return "";
    }
}

} // namespace

std::string nameKey(std::string_view name) {
    const auto text = folded(name);
    std::string key;
    bool isBetweenWords = false;
    for (std::string_view rest = text; !rest.empty();) {
        const auto start = rest;
        const auto character = takeCharacter(rest);
        if (!character) break; // folded texts are UTF-8
        if (isGap(*character)) {
            isBetweenWords = true;
        } else if (!isSilent(*character)) {
            if (isBetweenWords && !key.empty()) key += ' ';
            isBetweenWords = false;
            const auto plain = plainOf(*character);
            key += plain.empty() ? start.substr(0, start.size() - rest.size()) : plain;
        }
    }
    return key;
}

} // namespace lumaro
