// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Edits.h"

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/Placing.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/BoardLogic/SmallBoard.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;

constexpr Hand hand{.author = PartnerID::a, .now = noon};

BoardItem itemOf(const Op& op) {
    return std::get<Upsert>(op.value).item;
}

Board after(const Edits::Result& ops, const Board& board) {
    EXPECT_TRUE(ops.has_value());
    const auto result = BoardLogic::apply(*ops, board, noon);
    EXPECT_TRUE(result.rejected.empty());
    return result.board;
}

TEST(Edits, R15_EveryEditIsNewerThanWhatItEditsWhateverTheClockSays) {
    using Edit = std::function<Edits::Result(const Board&, Hand)>;
    const Edit edits[]{
        [](const Board& b, Hand h) { return Edits::move(b, noteId, {1, 1}, h); },
        [](const Board& b, Hand h) { return Edits::turn(b, noteId, 9, h); },
        [](const Board& b, Hand h) { return Edits::resize(b, noteId, 1.5, h); },
        [](const Board& b, Hand h) { return Edits::raise(b, noteId, h); },
        [](const Board& b, Hand h) { return Edits::changePayload(b, noteId, samples::plainNote("yo"), h); },
        [](const Board& b, Hand h) { return Edits::changeText(b, noteId, pm::emptyDoc(), h); },
        [](const Board& b, Hand h) { return Edits::keep(b, noteId, h); },
        [](const Board& b, Hand h) { return Edits::unkeep(b, noteId, h); },
    };
    for (const auto version : {noon - 1h, noon + 5h, noon + 5h + 400us, noon + 5h + 600us}) {
        Board board = smallBoard();
        for (auto& item : board.items) item.updatedAt = version;
        const Instant expected = std::max(noon, Wire::truncatedToMilliseconds(version) + 1ms);
        for (const auto& edit : edits) {
            const auto ops = edit(board, {PartnerID::a, noon + 300us});
            ASSERT_TRUE(ops.has_value());
            for (const auto& op : *ops) {
                EXPECT_EQ(itemOf(op).updatedAt, expected);
                EXPECT_EQ(itemOf(op).author, PartnerID::a);
            }
        }
        const auto down = Edits::takeDown(board, noteId, hand);
        EXPECT_GE(std::get<Delete>(down->front().value).deletedAt, expected);
    }
}

TEST(Edits, AVersionAtTheEndOfTimeIsEditedWithoutOverflow) {
    Board board = smallBoard();
    board.items[0].updatedAt = Instant::max();
    const auto ops = Edits::move(board, noteId, {1, 1}, hand);
    EXPECT_EQ(itemOf(ops->front()).updatedAt, Wire::truncatedToMilliseconds(Instant::max()));
}

TEST(Edits, PuttingUpPlacesTiltsAndStacks) {
    const auto ops = Edits::putUp(smallBoard(), numberedId(9), samples::plainNote("new"), {}, hand);
    const auto item = itemOf(ops->front());
    EXPECT_EQ(item.center, BoardLogic::openSpot(BoardSpec::noteSize, smallBoard()));
    EXPECT_EQ(item.rotationDegrees, BoardLogic::seededTilt(item.id));
    EXPECT_EQ(item.z, 3);
    EXPECT_EQ(item.createdAt, noon);
    EXPECT_EQ(item.updatedAt, noon);
    const auto dropped = Edits::putUp(smallBoard(), numberedId(9), samples::plainNote("new"), Point{-50, 2000}, hand);
    EXPECT_EQ(itemOf(dropped->front()).center, (Point{0, 1000}));
}

TEST(Edits, R15_PuttingUpAgainOutlivesTheTombstone) {
    Board board = smallBoard();
    board.tombstones[numberedId(9)] = noon + 1h;
    EXPECT_EQ(after(Edits::putUp(board, numberedId(9), samples::plainNote("back"), {}, hand), board).items.size(), 4U);
}

TEST(Edits, R16_DoodlesGoWithTheItemTheyAreDrawnOn) {
    const Board board = smallBoard();
    const auto moved = after(Edits::move(board, noteId, {510, 480}, hand), board);
    EXPECT_EQ(moved.find(drawnId)->center, (Point{610, 480}));
    const auto grown = after(Edits::resize(board, noteId, 1.5, hand), board);
    EXPECT_EQ(grown.find(drawnId)->center, (Point{650, 500}));
    EXPECT_EQ(grown.find(drawnId)->scale, 1.5);
    const auto turned = after(Edits::turn(board, noteId, 90, hand), board);
    EXPECT_EQ(turned.find(noteId)->rotationDegrees, 15);
    EXPECT_NEAR(distance(turned.find(drawnId)->center, {596.5926, 525.8819}), 0, 1e-4);
    const auto raised = after(Edits::raise(board, noteId, hand), board);
    EXPECT_EQ(raised.find(noteId)->z, 3);
    EXPECT_EQ(raised.find(drawnId)->z, 4);
    EXPECT_EQ(*moved.find(chipId), *board.find(chipId));
    const auto down = after(Edits::takeDown(board, noteId, hand), board);
    EXPECT_EQ(down.items.size(), 1U);
    EXPECT_GT(down.tombstones.at(drawnId), board.find(drawnId)->updatedAt);
}

TEST(Edits, R17_NothingRisesAboveTheEndOfTheRangeAndNothingStops) {
    Board board = smallBoard();
    board.items[2].z = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(after(Edits::raise(board, noteId, hand), board).find(noteId)->z, board.items[2].z);
    EXPECT_EQ(after(Edits::putUp(board, numberedId(9), {}, {}, hand), board).items.back().z, board.items[2].z);
}

TEST(Edits, KeepingAndUnkeepingANote) {
    const Board board = smallBoard();
    const auto unkept = after(Edits::unkeep(board, noteId, hand), board);
    EXPECT_EQ(unkept.find(noteId)->expiresAt(), noon + 24h);
    const auto kept = after(Edits::keep(unkept, noteId, hand), unkept);
    EXPECT_TRUE(kept.find(noteId)->payload.as<NotePayload>()->isKept());
}

TEST(Edits, WhatCannotBeDoneIsATypedFault) {
    const Board board = smallBoard();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<Edits::Result, EditFault> cases[]{
        {Edits::move(board, numberedId(9), {}, hand), EditFault::noSuchItem},
        {Edits::takeDown(board, numberedId(9), hand), EditFault::noSuchItem},
        {Edits::keep(board, chipId, hand), EditFault::wrongKind},
        {Edits::changePayload(board, chipId, samples::plainNote("x"), hand), EditFault::wrongKind},
        {Edits::resize(board, drawnId, 2, hand), EditFault::cannotResize},
        {Edits::move(board, noteId, {nan, 0}, hand), EditFault::notFinite},
        {Edits::turn(board, noteId, nan, hand), EditFault::notFinite},
        {Edits::putUp(board, numberedId(9), {}, Point{0, nan}, hand), EditFault::notFinite},
    };
    for (const auto& [result, fault] : cases) EXPECT_EQ(result.error(), fault);
}

} // namespace
} // namespace lumaro
