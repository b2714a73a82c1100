// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/OneLine.h"

#include <cstddef>

namespace lumaro {

std::string onOneLine(std::string_view text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        // A terminal also takes orders from U+0080 to U+009F.
        const bool isUpperControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        const bool isControl = byte < 0x20 || byte == 0x7F || isUpperControl;
        line.push_back(isControl ? '?' : text[i]);
        if (isUpperControl) ++i;
    }
    return line;
}

} // namespace lumaro
