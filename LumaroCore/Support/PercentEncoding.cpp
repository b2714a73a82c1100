// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/PercentEncoding.h"

namespace lumaro {
namespace {

bool isAsciiAlphanumeric(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

} // namespace

std::string percentEncoded(std::string_view text, std::string_view leftAsTheyAre) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        if (isAsciiAlphanumeric(c) || leftAsTheyAre.contains(c)) {
            encoded.push_back(c);
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded.push_back('%');
        encoded.push_back(digits[byte >> 4U]);
        encoded.push_back(digits[byte & 15U]);
    }
    return encoded;
}

} // namespace lumaro
