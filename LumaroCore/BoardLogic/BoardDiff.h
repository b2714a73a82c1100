// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

#include <cstddef>
#include <vector>

namespace lumaro {

/// What happened between two boards, by item. Rows are places in `Board::items`.
///
/// A list that holds the rows of the first board becomes that of the second by removing `removed` as listed, moving
/// rows as `reordered` lists, then inserting `added` as listed; the other rows are then those of the second board.
struct BoardDiff {
    struct RowMove {
        std::size_t from = 0;
        std::size_t to = 0; ///< the row it has once it is out of its old one
        bool operator==(const RowMove&) const = default;
    };

    std::vector<std::size_t> removed;   ///< rows of the first board, the last one first
    std::vector<RowMove> reordered;     ///< among the rows that stay; mostly empty, as an update keeps an item's row
    std::vector<std::size_t> added;     ///< rows of the second board, the first one first
    std::vector<std::size_t> moved;     ///< rows of the second board with another centre, tilt, scale or z
    std::vector<std::size_t> changed;   ///< rows of the second board that hold something else
    std::vector<std::size_t> restamped; ///< rows of the second board in which only author or instants differ
    bool background = false;
    bool thread = false;

    bool isEmpty() const;
    bool operator==(const BoardDiff&) const = default;
};

namespace BoardLogic {

/// Pure; items are matched by id, several of one id in their order.
BoardDiff diff(const Board& before, const Board& after);

} // namespace BoardLogic
} // namespace lumaro
