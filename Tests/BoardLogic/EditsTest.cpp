// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Edits.h"

#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/Expiry.h"
#include "LumaroCore/BoardLogic/Placing.h"
#include "LumaroCore/BoardLogic/Stacking.h"
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
const UUID nobody = numberedId(9);

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
        [](const Board& b, Hand h) { return Edits::lower(b, noteId, h); },
        [](const Board& b, Hand h) { return Edits::lock(b, noteId, h); },
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

TEST(Edits, R17_NothingGetsBeyondTheEndsOfTheRangeAndNothingStops) {
    Board board = smallBoard();
    board.items[2].z = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(after(Edits::lower(board, noteId, hand), board).find(noteId)->z, board.items[2].z);
    board.items[2].z = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(after(Edits::raise(board, noteId, hand), board).find(noteId)->z, board.items[2].z);
    EXPECT_EQ(after(Edits::putUp(board, numberedId(9), {}, {}, hand), board).items.back().z, board.items[2].z);
}

TEST(Edits, R12_R16_SeveralItemsRiseAndSinkAsTheyLieWithTheirDoodles) {
    Board board = smallBoard();
    auto& other = board.items.emplace_back(board.items[2]);
    other.id = numberedId(4);
    other.z = 7;
    const std::vector both{chipId, noteId};
    const auto zs = [](const Board& b) {
        std::vector<std::int64_t> found;
        for (const auto& item : b.items) found.push_back(item.z);
        return found;
    };
    const auto front = after(Edits::stack(board, both, Edits::StackEnd::front, hand), board);
    EXPECT_EQ(zs(front), (std::vector<std::int64_t>{8, 9, 10, 7}));
    EXPECT_TRUE(Edits::isStacked(front, both, Edits::StackEnd::front));
    const auto back = after(Edits::stack(front, both, Edits::StackEnd::back, hand), front);
    EXPECT_EQ(zs(back), (std::vector<std::int64_t>{4, 5, 6, 7}));
    EXPECT_FALSE(Edits::isStacked(back, {&chipId, 1}, Edits::StackEnd::back));
    // A doodle is never under what it is drawn on.
    board.items[1].z = -5;
    const auto lowered = after(Edits::lower(board, noteId, hand), board);
    EXPECT_EQ(zs(lowered), (std::vector<std::int64_t>{0, 1, 2, 7}));
}

TEST(Edits, R23_ALockedItemIsLeftAsItIsUntilItIsUnlocked) {
    const Board board = smallBoard();
    const auto locked = after(Edits::lock(board, noteId, hand), board);
    const auto drawing = DoodlePayload{.width = 30, .height = 30, .strokes = {}, .on = noteId};
    const Edits::Result refused[]{Edits::move(locked, noteId, {1, 1}, hand),
                                  Edits::turn(locked, noteId, 9, hand),
                                  Edits::resize(locked, noteId, 1.5, hand),
                                  Edits::raise(locked, noteId, hand),
                                  Edits::lower(locked, noteId, hand),
                                  Edits::changeText(locked, noteId, pm::emptyDoc(), hand),
                                  Edits::keep(locked, noteId, hand),
                                  Edits::takeDown(locked, noteId, hand),
                                  Edits::move(locked, drawnId, {1, 1}, hand),
                                  Edits::takeDown(locked, drawnId, hand),
                                  Edits::putUp(locked, nobody, drawing, {}, hand),
                                  Edits::changePayload(locked, noteId, NotePayload{}, hand)};
    for (const auto& edit : refused) EXPECT_EQ(edit.error(), EditFault::locked) << &edit - refused;
    EXPECT_TRUE(Edits::move(locked, chipId, {1, 1}, hand));
    const auto unlocked = after(Edits::unlock(locked, noteId, hand), locked);
    EXPECT_TRUE(Edits::takeDown(unlocked, noteId, hand));
    // The room asks nobody, and neither does the end of a note's day.
    Board fading = locked;
    fading.items[0].payload = NotePayload{pm::emptyDoc(), "sky", "brass", noon};
    EXPECT_EQ(BoardLogic::expiryOps(fading, noon).size(), 1U);
    EXPECT_EQ(BoardLogic::apply(*Edits::move(board, noteId, {1, 1}, {PartnerID::b, noon + 1h}), locked, noon).rejected,
              std::vector<RejectedOp>{});
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
