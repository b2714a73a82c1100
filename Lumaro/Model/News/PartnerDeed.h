// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

#include <cstdint>
#include <vector>

namespace lumaro {

/// What the partner did to one thing on the board, for people who do not watch it.
struct PartnerDeed {
    enum class What : std::uint8_t { putUp, tookDown, changed, moved };

    What what = What::putUp;
    BoardItem item; ///< as it is, or as it was before it was taken down

    bool operator==(const PartnerDeed&) const = default;
};

/// What an act did to a board, one deed for each thing. A doodle that went along with what it is drawn on is no deed,
/// nor is a new place in the stack.
std::vector<PartnerDeed> deedsBetween(const Board& before, const Board& after);

} // namespace lumaro
