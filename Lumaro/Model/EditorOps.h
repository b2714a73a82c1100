// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"

#include <map>
#include <optional>
#include <span>
#include <vector>

namespace lumaro {

/// What the editor does to several items, or to one in several ways, in one act. Pure, as `Edits` are.
namespace EditorOps {

/// Whether this is a doodle drawn on that item.
bool isDrawnOn(const BoardItem& item, const UUID& id);
/// The item, then the doodles drawn on it, in board order; none when it is not on the board.
std::vector<BoardItem> withDoodles(const Board& board, const UUID& id);
/// Whether the item and the doodles on it already are in front of all others.
bool isInFront(const Board& board, const UUID& id);

/// The item as a version newer than the one on the board, than its tombstone, and than `buriedAt`, which a board that
/// came from the room does not remember.
Op written(const Board& board, BoardItem item, Hand hand, std::optional<Instant> buriedAt = std::nullopt);

/// Puts the upserts in place, asking no rule: a board on which the next edit of the same act is made.
void overlay(Board& board, std::span<const Op> ops);
/// The items of `after` that are not on `before`, or look different there, each written over `before` once.
std::vector<Op> changes(const Board& before, const Board& after, Hand hand);
/// The ops without those that would change nothing but author and instants.
std::vector<Op> withoutIdle(std::vector<Op> ops, const Board& board);

/// The payload as something put up now holds it: a note that is to come down does so a lifespan from now.
Payload fresh(Payload payload, Instant now);
/// Puts these up anew where they hang, in front of everything and in this order. `names` has the ids of those that
/// get another one; doodles on them are drawn on the new one.
Edits::Result putUpAnew(const Board& board, std::span<const BoardItem> items, const std::map<UUID, UUID>& names,
                        Hand hand);
/// How far from an item its duplicate hangs: a step aside, as many as it takes to cover no other's middle.
Point duplicateOffset(const Board& board, const BoardItem& item);

} // namespace EditorOps
} // namespace lumaro
