// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Expiry.h"

#include <algorithm>

namespace lumaro::BoardLogic {

std::vector<Op> expiryOps(const Board& board, Instant now) {
    std::vector<Op> ops;
    for (const auto& item : board.items) {
        if (!item.hasExpired(now)) continue;
        ops.push_back({Delete{.itemId = item.id, .deletedAt = std::max(item.updatedAt, now)}});
    }
    return ops;
}

std::vector<Op> droppingExpired(std::vector<Op> ops, Instant now) {
    std::erase_if(ops, [&](const Op& op) {
        const auto* upsert = std::get_if<Upsert>(&op.value);
        return upsert != nullptr && upsert->item.hasExpired(now);
    });
    return ops;
}

} // namespace lumaro::BoardLogic
