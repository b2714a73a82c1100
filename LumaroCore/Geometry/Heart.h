// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Geometry/Doodle.h"

namespace lumaro {

/// A small heart as a hand draws it: on a corner of the item's paper that has no doodle yet, or on the glass beside it
/// when the item is a doodle itself. `id`, which the heart is to have, tells how it is drawn and where exactly, so that
/// no two are alike.
std::expected<PlacedDoodle, DoodleFault> heartFor(const Board& board, const BoardItem& item, const UUID& id);

} // namespace lumaro
