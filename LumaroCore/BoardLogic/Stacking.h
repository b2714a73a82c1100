// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"

#include <cstdint>
#include <span>

// Which item lies over which. Pure, as all edits are.
namespace lumaro::Edits {

enum class StackEnd : std::uint8_t { front, back };

/// Brings the items in front of all others, or behind them, with the doodles on them. Among themselves they lie as they
/// did, but a doodle never under what it is drawn on. One version of each.
Result stack(const Board& board, std::span<const UUID> ids, StackEnd end, Hand hand);
/// Whether the items and the doodles on them lie there already.
bool isStacked(const Board& board, std::span<const UUID> ids, StackEnd end);

} // namespace lumaro::Edits
