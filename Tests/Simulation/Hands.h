// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Support/UUIDSource.h"
#include "Samples/Samples.h"

#include <cstddef>
#include <vector>

namespace lumaro::simulation {

/// What people do to the board they see.
class Hands {
public:
    Hands(const Board& shown, Hand hand, UUIDSource& ids, samples::Random& random)
        : shown_(shown), hand_(hand), ids_(ids), random_(random) {}

    /// One edit, as the editor makes it.
    std::vector<Op> anyAct();
    /// Puts up so many notes at once, and random ops behind them for which a full board has no place.
    std::vector<Op> fullBoard(std::size_t notes);
    /// Moves every item on the board, several times over.
    std::vector<Op> everythingMoved(std::size_t times);
    /// What another program might send: old and new instants about a few items, some of it against the rules.
    std::vector<Op> wildOps(std::size_t count);
    /// Puts up again what was taken down, where this device remembers it.
    std::vector<Op> broughtBack();

private:
    std::vector<Op> editOf(const BoardItem& item);
    Payload noteOfToday();
    Point anyPlace();

    const Board& shown_;
    Hand hand_;
    UUIDSource& ids_;
    samples::Random& random_;
};

} // namespace lumaro::simulation
