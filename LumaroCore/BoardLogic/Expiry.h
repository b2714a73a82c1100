// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"

#include <vector>

namespace lumaro::BoardLogic {

/// The deletes that take expired notes down, in board order; none is older than its note's last edit.
std::vector<Op> expiryOps(const Board& board, Instant now);

/// The same ops without the upserts of items that have already expired, so that a late copy does not put a note back.
std::vector<Op> droppingExpired(std::vector<Op> ops, Instant now);

} // namespace lumaro::BoardLogic
