// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisCovers.h"

namespace lumaro {
namespace {

// Others are short.
constexpr std::size_t longUrl = 4096;

} // namespace

void MprisCovers::put(MusicSource source, std::string trackKey, std::string url) {
    if (url.empty()) return;
    urls_.put(std::pair{source, std::move(trackKey)}, std::move(url));
    std::size_t bytes = 0;
    urls_.eraseIf([&](const auto& /*track*/, const std::string& cover) {
        if (cover.size() <= longUrl) return false;
        bytes += cover.size();
        return bytes > maxDataBytes;
    });
}

std::optional<std::string> MprisCovers::find(MusicSource source, std::string_view trackKey) const {
    const auto* const url = urls_.find(std::pair{source, std::string{trackKey}});
    return url == nullptr ? std::nullopt : std::optional{*url};
}

} // namespace lumaro
