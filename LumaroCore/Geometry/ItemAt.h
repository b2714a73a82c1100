// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Support/Plane.h"

#include <optional>
#include <vector>

namespace lumaro {

/// The item in front at a place on the canvas: its paper, turned and scaled, or a doodle's ink within `reach` points.
/// None where there is no item.
std::optional<UUID> itemAt(const Board& board, Point place, double reach);

/// What an item covers of the canvas, turned and scaled: the upright rectangle around its paper.
Rect boundsOf(const BoardItem& item);

/// The ids of the items whose middles lie within the rectangle, in board order.
std::vector<UUID> itemsWithin(const Board& board, Rect area);

/// The ids of all items in the order in which people read them: rows from the top, each from the left. Items whose
/// middles are less than half a note apart in height are in one row.
std::vector<UUID> readingOrder(const Board& board);

} // namespace lumaro
