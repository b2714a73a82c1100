// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopEntry.h"

#include <algorithm>

namespace lumaro {
namespace {

// One argument of an "Exec" line: in quotes, as a shell would read it, "%" doubled, and all that as a string of a
// desktop entry, which has escapes of its own.
std::string quoted(std::string_view argument) {
    std::string text{'"'};
    for (const char c : argument) {
        switch (c) {
        case '\\': text.append(R"(\\\\)"); break;
        case '"':
        case '`':
        case '$': text.append({'\\', '\\', c}); break;
        case '%': text.append("%%"); break;
        case '\n': text.append(R"(\n)"); break;
        default: text.push_back(c);
        }
    }
    return text + '"';
}

} // namespace

std::string execValue(const std::vector<std::string>& command) {
    std::string value;
    for (const auto& argument : command) value.append(value.empty() ? "" : " ").append(quoted(argument));
    return value;
}

bool hasLine(std::string_view text, std::string_view line) {
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        if (text.substr(0, end) == line) return true;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

} // namespace lumaro
