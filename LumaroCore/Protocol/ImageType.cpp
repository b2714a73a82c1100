// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/ImageType.h"

namespace lumaro {

std::optional<std::string_view> imageTypeOf(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xff\xd8\xff"sv)) return "image/jpeg";
    if (bytes.starts_with("\x89PNG\r\n\x1a\n"sv)) return "image/png";
    constexpr std::size_t riffHeader = 8; // "RIFF" and the size
    if (bytes.starts_with("RIFF"sv) && bytes.size() > riffHeader && bytes.substr(riffHeader).starts_with("WEBP"sv)) {
        return "image/webp";
    }
    return std::nullopt;
}

} // namespace lumaro
