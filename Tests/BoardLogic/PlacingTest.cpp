// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Placing.h"

#include "LumaroCore/BoardLogic/Expiry.h"
#include "Samples/Samples.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;

BoardItem itemAt(std::uint64_t id, Point center, std::int64_t z) {
    BoardItem item;
    item.id = numberedId(id);
    item.center = center;
    item.z = z;
    item.payload = samples::plainNote("hi");
    return item;
}

TEST(Stacking, R12_NewItemsGoAboveAndRaisedItemsAboveTheOthers) {
    Board board;
    EXPECT_EQ(BoardLogic::nextZ(board), 1);
    board.items = {itemAt(1, {}, -7), itemAt(2, {}, -9)};
    EXPECT_EQ(BoardLogic::nextZ(board), -6);
    EXPECT_EQ(BoardLogic::bumpingZ(board.items[1], board).z, -6);
    EXPECT_EQ(BoardLogic::bumpingZ(board.items[0], board).z, -8);
    board.items.pop_back();
    EXPECT_EQ(BoardLogic::bumpingZ(board.items[0], board).z, 1);
}

TEST(SeededTilt, R13_IsTheHashOfTheIdSpreadOverEightDegrees) {
    // Reckoned apart from this code, with exact integers.
    EXPECT_EQ(BoardLogic::seededTilt(UUID{}), 0.25392137724700703);
    EXPECT_EQ(BoardLogic::seededTilt(*UUID::parse("01234567-89ab-cdef-0123-456789abcdef")), -2.083540813277697);
    samples::Random random{3};
    double low = 4;
    double high = -4;
    for (int i = 0; i < 2000; ++i) {
        const double tilt = BoardLogic::seededTilt(numberedId(random()));
        low = std::min(low, tilt);
        high = std::max(high, tilt);
    }
    EXPECT_GE(low, -4);
    EXPECT_LT(low, -3.9);
    EXPECT_LT(high, 4);
    EXPECT_GT(high, 3.9);
}

TEST(OpenSpot, R14_TradesNearnessAgainstOverlap) {
    Board board;
    EXPECT_EQ(BoardLogic::openSpot({280, 280}, board), (Point{800, 500}));
    // A note in the middle: of the places that lie clear of it, the nearest of all rings.
    board.items = {itemAt(1, {800, 500}, 1)};
    const Point spot = BoardLogic::openSpot({100, 100}, board);
    EXPECT_EQ(spot, (Point{992.0, 500.0}));
    EXPECT_EQ(sharedArea(Rect::centredOn(spot, {100, 100}), Rect::centredOn({800, 500}, {280, 280})), 0);
}

TEST(OpenSpot, R14_HoldsTheItemInsideTheCanvasByTheFarEdgeLast) {
    EXPECT_EQ(BoardLogic::openSpot({1600, 1000}, {}), (Point{776, 476}));
    EXPECT_EQ(BoardLogic::openSpot({0, 0}, {}), (Point{800, 500}));
}

TEST(OpenSpot, R14_MeasuresItemsByWhatTheyHold) {
    Board board;
    auto doodle = itemAt(1, {800, 500}, 1);
    doodle.scale = 2;
    doodle.payload = DoodlePayload{.width = 20, .height = 20, .strokes = {}, .on = {}};
    board.items = {doodle};
    // Clear of 40 by 40 points at the first ring, which is nearer than any place beside the 120 by 120 of its kind.
    EXPECT_LT(distance(BoardLogic::openSpot({60, 60}, board), {800, 500}), 97);
}

TEST(Expiry, R11_TakesDownNotesWhoseTimeHasComeAndNothingElse) {
    Board board;
    const auto note = [](std::uint64_t id, std::optional<Instant> expiresAt, Instant updatedAt) {
        auto item = itemAt(id, {}, 1);
        item.updatedAt = updatedAt;
        item.payload = NotePayload{.pm = pm::emptyDoc(), .paper = {}, .pin = {}, .expiresAt = expiresAt};
        return item;
    };
    board.items = {note(1, noon, noon - 1h), note(2, noon + 1us, noon), note(3, {}, noon),
                   note(4, noon - 1h, noon + 1h)};
    const std::vector<Op> expected{{Delete{.itemId = numberedId(1), .deletedAt = noon}},
                                   {Delete{.itemId = numberedId(4), .deletedAt = noon + 1h}}};
    EXPECT_EQ(BoardLogic::expiryOps(board, noon), expected);

    std::vector<Op> ops{
        {Upsert{board.items[0]}}, {Upsert{board.items[1]}}, {SetBackground{}}, {Upsert{board.items[3]}}};
    ops.push_back(expected[0]);
    const std::vector<Op> kept{ops[1], ops[2], ops[4]};
    EXPECT_EQ(BoardLogic::droppingExpired(ops, noon), kept);
}

} // namespace
} // namespace lumaro
