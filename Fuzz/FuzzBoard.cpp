// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCore/BoardLogic/BoardDiff.h"
#include "LumaroCore/BoardLogic/Expiry.h"
#include "LumaroCore/BoardLogic/Placing.h"

#include <functional>

using namespace lumaro;

// Boards from anywhere: no rule may stumble over what one holds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto board = fuzz::roundTrip<Board>(fuzz::textOf(data, size));
    if (!board) return 0;
    fuzz::require(std::hash<Board>{}(*board) == std::hash<Board>{}(Board{*board}), "a copy has another hash");
    fuzz::require(BoardLogic::diff(*board, *board).isEmpty(), "a board differs from itself");
    fuzz::require(isFinite(BoardLogic::openSpot(BoardSpec::noteSize, *board)), "a spot is nowhere");
    static_cast<void>(BoardLogic::expiryOps(*board, Instant{}));
    return 0;
}
