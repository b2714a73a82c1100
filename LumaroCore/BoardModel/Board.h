// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardItem.h"

#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace lumaro {

/// When an item was deleted.
struct Tombstone {
    UUID itemId;
    Instant deletedAt;

    void hashInto(Hasher& hasher) const;
    bool operator==(const Tombstone&) const = default;
};

/// The shared board. A plain value: a copy is an independent board, and cheap, as payloads are shared.
struct Board {
    BackgroundID background = BackgroundID::butter;
    std::optional<Instant> threadTiedAt; ///< when the red thread was tied
    Instant updatedAt;                   ///< of the latest change applied
    std::vector<BoardItem> items;        ///< an update keeps an item's place; new items come last
    std::map<UUID, Instant> tombstones;  ///< when items were deleted; never encoded

    /// The first item with this id; null when there is none.
    const BoardItem* find(const UUID& id) const;

    static constexpr bool hasOwnJson = true;
    /// The fields on the wire, after "v".
    static constexpr auto fields() {
        return std::tuple{Field{"background", &Board::background}, Field{"threadTiedAt", &Board::threadTiedAt},
                          Field{"updatedAt", &Board::updatedAt}, Field{"items", &Board::items}};
    }
    void hashInto(Hasher& hasher) const;
    bool operator==(const Board&) const = default;
};

} // namespace lumaro
