// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "LumaroCore/BoardModel/Board.h"
#include "Widgets/Items/ItemFace.h"

#include <set>
#include <vector>

namespace lumaro {

/// One item as a view shows it. Places are points of the canvas.
struct BoardRow {
    QString itemId;
    QString kind;
    Point center;
    Point anchor;      ///< the centre of the item that a doodle is drawn on; else its own
    Point anchorReach; ///< how far the box around that item reaches from its centre
    Size size;         ///< unscaled
    double tilt = 0;
    double scale = 1;
    int stack = 0; ///< its rank, the front one highest
    ItemFace face;
    QString spoken;
    bool isArriving = false;
    bool isFalling = false;
    bool isInHand = false;
    bool isTouched = false; ///< a doodle arrives on it

    bool operator==(const BoardRow&) const = default;
};

/// The items that are arriving, falling or in the hand, by id.
struct BoardMoves {
    const std::set<UUID>& arriving;
    const std::set<UUID>& falling;
    const std::set<UUID>& inHand;
};

/// The rows of a board, in the order of its items.
std::vector<BoardRow> rowsOf(const Board& board, const BoardMoves& moves, const LiveContext& live);

} // namespace lumaro
