// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/SharedBoard.h"

#include "Samples/Samples.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

using samples::noon;
using samples::numberedId;

// Under any order of messages the simulation holds it to its word; here is what each of them does.
PendingBatch paint(std::uint64_t id, BackgroundID paper) {
    return {numberedId(id), {{SetBackground{paper}}}};
}

TEST(SharedBoard, P39_R18_R19_R22_WhatWaitsStaysOnScreenThroughAWelcomeAndARestart) {
    const Board room;
    BoardItem item;
    item.id = numberedId(1);
    const PendingBatch batch{numberedId(7), {{Upsert{item}}}};
    SharedBoard board{room, {}, noon};
    EXPECT_TRUE(board.enqueue(batch, noon).empty());
    board.welcome(room, noon);
    EXPECT_EQ(board.shown().items.size(), 1U);
    EXPECT_TRUE(board.confirmed().items.empty());
    EXPECT_EQ(SharedBoard(room, {batch}, noon).shown(), board.shown());
    board.acked(numberedId(8), noon);
    EXPECT_EQ(board.pending().size(), 1U);
    board.acked(batch.batchId, noon);
    EXPECT_EQ(board.confirmed().items.size(), 1U);
}

TEST(SharedBoard, R19_R20_WhatIsConfirmedGoesUnderWhatWaitsInItsOrder) {
    SharedBoard board;
    board.enqueue(paint(1, BackgroundID::sky), noon);
    board.enqueue(paint(2, BackgroundID::oat), noon);
    board.acked(numberedId(2), noon);
    EXPECT_EQ(board.confirmed().background, BackgroundID::oat);
    EXPECT_EQ(board.shown().background, BackgroundID::sky);
    board.applyRemote(paint(3, BackgroundID::lilac).ops, noon);
    EXPECT_EQ(board.confirmed().background, BackgroundID::lilac);
    EXPECT_EQ(board.shown().background, BackgroundID::sky);
}

TEST(SharedBoard, EnqueueAnswersWithWhatTheShownBoardRefuses) {
    SharedBoard board;
    BoardItem tilted;
    tilted.rotationDegrees = 50;
    const auto refused = board.enqueue({numberedId(1), {{Upsert{tilted}}}}, noon);
    ASSERT_EQ(refused.size(), 1U);
    EXPECT_EQ(refused.front().reason, RejectionReason::invalidRotation);
}

} // namespace
} // namespace lumaro
