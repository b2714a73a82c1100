// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Shortened.h"

#include "LumaroCore/Support/Unicode.h"

namespace lumaro {
namespace {

bool isGap(char32_t character) {
    const bool isControl = character < 0x20 || (character >= 0x7f && character < 0xa0);
    return isControl || classOf(character) == CharacterClass::space;
}

std::string onePhysicalLine(std::string_view text) {
    std::string line;
    bool isBehindGap = false;
    while (true) {
        const auto before = text;
        const auto character = takeCharacter(text);
        if (!character) return line;
        if (isGap(*character)) {
            isBehindGap = true;
            continue;
        }
        if (isBehindGap && !line.empty()) line += ' ';
        isBehindGap = false;
        line += before.substr(0, before.size() - text.size());
    }
}

} // namespace

std::string shortened(std::string_view text, std::size_t characters) {
    auto line = onePhysicalLine(text);
    auto start = firstCharacters(line, characters);
    if (start.size() == line.size()) return line;
    const auto space = start.rfind(' ');
    const bool isInWord = line[start.size()] != ' ';
    if (isInWord && space != std::string_view::npos && space >= start.size() / 2) start = start.substr(0, space);
    return std::string{trimmed(start)} + "…";
}

} // namespace lumaro
