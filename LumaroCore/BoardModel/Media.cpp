// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/Media.h"

namespace lumaro {

std::optional<UUID> mediumOf(const Payload& payload) {
    if (const auto* photo = payload.as<PhotoPayload>()) return photo->mediaId;
    if (const auto* sticker = payload.as<StickerPayload>()) return sticker->mediaId;
    return std::nullopt;
}

std::vector<UUID> mediaNamedBy(std::span<const Op> ops) {
    std::vector<UUID> named;
    for (const auto& op : ops) {
        const auto* upsert = std::get_if<Upsert>(&op.value);
        if (upsert == nullptr) continue;
        if (const auto medium = mediumOf(upsert->item.payload)) named.push_back(*medium);
    }
    return named;
}

std::vector<UUID> mediaNamedBy(const Board& board) {
    std::vector<UUID> named;
    for (const auto& item : board.items) {
        if (const auto medium = mediumOf(item.payload)) named.push_back(*medium);
    }
    return named;
}

} // namespace lumaro
