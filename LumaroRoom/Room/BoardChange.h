// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroRoom/Store/Records.h"

#include <span>
#include <vector>

namespace lumaro {

/// A batch applied to a room's board: what took effect, what was refused, and what the store has to change for it.
struct AppliedBatch {
    std::vector<Op> applied;
    std::vector<RejectedOp> rejected;
    BoardChange change;
};

/// The change that leaves items and tombstones as they are.
BoardChange changeTo(const Board& board);

/// Applies a batch to `board` in place. Costs what the batch touches: neither the board nor its tombstones are copied.
AppliedBatch applyBatch(std::span<const Op> ops, Board& board, Instant now);

} // namespace lumaro
