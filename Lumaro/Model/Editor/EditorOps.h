// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Geometry/Doodle.h"

#include <map>
#include <optional>
#include <span>
#include <vector>

namespace lumaro {

/// What the editor does to several items, or to one in several ways, in one act. Pure, as `Edits` are.
namespace EditorOps {

/// The item, then the doodles drawn on it, in board order; none when it is not on the board.
std::vector<BoardItem> withDoodles(const Board& board, const UUID& id);
/// Puts these up anew where they hang, in front of everything and in this order. `names` has the ids of those that
/// get another one; doodles on them are drawn on the new one.
Edits::Result putUpAnew(const Board& board, std::span<const BoardItem> items, const std::map<UUID, UUID>& names,
                        Hand hand);
/// Ink stays where and as it was drawn: it has no tilt of its own.
Edits::Result putUpInk(const Board& board, const UUID& id, PlacedDoodle ink, Hand hand);
/// How far from these items their duplicates are put up: a step aside, as many as it takes to cover no other's middle.
Point duplicateOffset(const Board& board, std::span<const UUID> ids);
/// The items and the doodles on them from back to front, a doodle after what it is drawn on.
std::vector<BoardItem> fromBackToFront(const Board& board, std::span<const UUID> ids);

} // namespace EditorOps
} // namespace lumaro
