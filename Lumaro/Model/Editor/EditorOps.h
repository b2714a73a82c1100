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

/// The item, then the doodles drawn on it, in board order; none when it is not on the board.
std::vector<BoardItem> withDoodles(const Board& board, const UUID& id);
/// Puts these up anew where they hang, in front of everything and in this order. `names` has the ids of those that
/// get another one; doodles on them are drawn on the new one.
Edits::Result putUpAnew(const Board& board, std::span<const BoardItem> items, const std::map<UUID, UUID>& names,
                        Hand hand);
/// How far from an item its duplicate is put up: a step aside, as many as it takes to cover no other's middle.
Point duplicateOffset(const Board& board, const BoardItem& item);

} // namespace EditorOps
} // namespace lumaro
