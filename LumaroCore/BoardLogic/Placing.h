// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

#include <cstdint>

namespace lumaro::BoardLogic {

/// The stacking value of a new item on top; 1 on an empty board. Stops the program when the top has no successor.
std::int64_t nextZ(const Board& board);

/// The item raised above every other item of the board. Stops the program when the top has no successor.
BoardItem bumpingZ(BoardItem item, const Board& board);

/// The tilt of a new item, in degrees within [-4, 4): the 64-bit FNV-1a hash of its id's bytes, spread over the range.
double seededTilt(const UUID& id);

/// Where a new item of this size lands: the centre of the place that best trades nearness to the middle of the canvas
/// against lying over other items, out of rings of candidates.
Point openSpot(Size size, const Board& board);

} // namespace lumaro::BoardLogic
