// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Apply.h"

#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;
using Reasons = std::vector<RejectionReason>;

BoardItem noteItem(std::uint64_t id, Instant updatedAt = noon, PartnerID author = PartnerID::a) {
    BoardItem item;
    item.id = numberedId(id);
    item.author = author;
    item.updatedAt = updatedAt;
    item.payload = samples::plainNote("hi");
    return item;
}

Op put(BoardItem item) {
    return {Upsert{std::move(item)}};
}
Op takeDown(std::uint64_t id, Instant at) {
    return {Delete{.itemId = numberedId(id), .deletedAt = at}};
}

ApplyResult apply(const std::vector<Op>& ops, const Board& board = {}) {
    return BoardLogic::apply(ops, board, noon + 1h);
}

Reasons reasons(const ApplyResult& result) {
    Reasons found;
    for (const auto& rejected : result.rejected) found.push_back(rejected.reason);
    return found;
}

Board boardOf(std::size_t count) {
    Board board;
    for (std::size_t i = 1; i <= count; ++i) board.items.push_back(noteItem(i));
    return board;
}

TEST(Apply, R1_RefusesABatchOverTheCapWhole) {
    std::vector<Op> ops(101, Op{SetBackground{BackgroundID::sky}});
    const auto refused = apply(ops);
    EXPECT_EQ(refused.board, Board{});
    ASSERT_EQ(refused.rejected.size(), 101U);
    EXPECT_EQ(refused.rejected.back(), (RejectedOp{100, ops.back(), RejectionReason::batchCapExceeded}));
    ops.pop_back();
    EXPECT_EQ(apply(ops).applied.size(), 100U);
}

TEST(Apply, R4_ChecksTiltThenScale) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        double rotation;
        double scale;
        Reasons expected;
    };
    const Case cases[]{{15, 0.5, {}},
                       {-15, 2, {}},
                       {15.000001, 1, {RejectionReason::invalidRotation}},
                       {nan, 1, {RejectionReason::invalidRotation}},
                       {16, 9, {RejectionReason::invalidRotation}},
                       {0, 2.01, {RejectionReason::invalidScale}},
                       {0, nan, {RejectionReason::invalidScale}}};
    for (const auto& [rotation, scale, expected] : cases) {
        auto item = noteItem(1);
        item.rotationDegrees = rotation;
        item.scale = scale;
        EXPECT_EQ(reasons(apply({put(item)})), expected) << rotation << " " << scale;
    }
}

TEST(Apply, R4_MeasuresAnItemByItsWireBytes) {
    const auto withText = [](std::size_t size) {
        auto item = noteItem(1);
        item.payload = samples::plainNote(std::string(size, 'x'));
        return item;
    };
    const auto envelope = Wire::encode(withText(0)).value().size();
    const auto room = BoardSpec::maxItemJSONBytes - envelope;
    EXPECT_EQ(reasons(apply({put(withText(room))})), Reasons{});
    EXPECT_EQ(reasons(apply({put(withText(room + 1))})), Reasons{RejectionReason::itemTooLarge});
}

TEST(Apply, R4_AnItemWithoutWireFormIsTooLarge) {
    auto unreal = noteItem(1);
    unreal.center.x = std::numeric_limits<double>::infinity();
    auto garbled = noteItem(1);
    garbled.payload = samples::plainNote("\xff");
    PMNode deep;
    for (int i = 0; i < 600; ++i) deep = pm::paragraph({std::move(deep)});
    auto bottomless = noteItem(1);
    bottomless.payload = NotePayload{.pm = std::move(deep), .paper = {}, .pin = {}, .expiresAt = {}};
    EXPECT_EQ(reasons(apply({put(unreal), put(garbled), put(bottomless)})), Reasons(3, RejectionReason::itemTooLarge));
}

TEST(Apply, R3_R6_FullBoardsTakeUpdatesButNoMoreItemsAndKeepTheTombstonesOfThose) {
    Board full = boardOf(60);
    full.tombstones[numberedId(61)] = noon - 1s;
    auto update = noteItem(60, noon + 1s);
    const auto result = apply({put(noteItem(61)), put(update)}, full);
    EXPECT_EQ(reasons(result), Reasons{RejectionReason::itemCapExceeded});
    EXPECT_EQ(result.board.items.back(), update);
    EXPECT_EQ(result.board.items.size(), 60U);
    EXPECT_EQ(result.board.tombstones, full.tombstones);
}

TEST(Apply, R5_R10_TheLaterVersionWinsAndAWinsTies) {
    struct Case {
        std::chrono::milliseconds later;
        PartnerID incoming;
        PartnerID existing;
        bool wins;
    };
    constexpr auto a = PartnerID::a;
    constexpr auto b = PartnerID::b;
    const Case cases[]{{1ms, b, a, true},  {-1ms, a, b, false}, {0ms, a, b, true},
                       {0ms, b, a, false}, {0ms, a, a, false},  {0ms, b, b, false}};
    for (const auto& [later, incoming, existing, wins] : cases) {
        Board board;
        board.items = {noteItem(1, noon, existing)};
        const auto item = noteItem(1, noon + later, incoming);
        const auto result = apply({put(item)}, board);
        EXPECT_EQ(reasons(result), wins ? Reasons{} : Reasons{RejectionReason::stale});
        EXPECT_EQ(result.board.items.front() == item, wins || item == board.items.front());
    }
}

TEST(Apply, R6_OnlyALaterUpsertBringsADeletedItemBack) {
    const auto deleted = apply({takeDown(1, noon)}, boardOf(1)).board;
    EXPECT_EQ(reasons(apply({put(noteItem(1, noon))}, deleted)), Reasons{RejectionReason::deleted});
    const auto back = apply({put(noteItem(1, noon + 1ms))}, deleted);
    EXPECT_EQ(reasons(back), Reasons{});
    EXPECT_TRUE(back.board.tombstones.empty());
}

TEST(Apply, R7_ADeleteTakesDownEvenWhatWasEditedLater) {
    Board board = boardOf(2);
    board.items.push_back(noteItem(1)); // a second copy of the id
    board.tombstones[numberedId(2)] = noon + 5s;
    const auto result = apply({takeDown(1, noon - 1h), takeDown(2, noon), takeDown(9, noon)}, board);
    EXPECT_TRUE(result.board.items.empty());
    EXPECT_EQ(result.board.tombstones,
              (std::map<UUID, Instant>{{numberedId(1), noon - 1h}, {numberedId(2), noon + 5s}, {numberedId(9), noon}}));
    EXPECT_EQ(result.applied.size(), 3U);
}

TEST(Apply, R7_DoodlesComeDownWithTheItemTheyAreDrawnOn) {
    Board board = boardOf(1);
    const auto doodle = [](std::uint64_t id, std::optional<UUID> on) {
        auto item = noteItem(id);
        item.payload = DoodlePayload{.width = 9, .height = 9, .strokes = {}, .on = on};
        return item;
    };
    board.items.push_back(doodle(2, numberedId(1)));
    board.items.push_back(doodle(3, std::nullopt));
    board.items.push_back(doodle(4, numberedId(2)));
    const auto result = apply({takeDown(1, noon + 3s)}, board).board;
    ASSERT_EQ(result.items.size(), 2U);
    EXPECT_EQ(result.items[0].id, numberedId(3));
    EXPECT_EQ(result.items[1].id, numberedId(4));
    EXPECT_EQ(result.tombstones.at(numberedId(2)), noon + 3s);
    EXPECT_EQ(result.tombstones.size(), 2U);
}

TEST(Apply, R2_OpsOfABatchSeeOneAnother) {
    const auto upThenDown = apply({put(noteItem(1)), takeDown(1, noon)});
    EXPECT_TRUE(upThenDown.board.items.empty());
    const auto downThenUp = apply({takeDown(1, noon - 1ms), put(noteItem(1)), put(noteItem(1))});
    EXPECT_EQ(downThenUp.board.items.size(), 1U);
    EXPECT_EQ(reasons(downThenUp), Reasons{RejectionReason::stale});
    EXPECT_EQ(downThenUp.rejected.front().index, 2);
}

TEST(Apply, R8_R9_TheBoardsInstantFollowsWhatAppliedAndNeverGoesBack) {
    Board board = boardOf(1);
    board.updatedAt = noon;
    const auto after = [&](const Op& op) { return apply({op}, board).board.updatedAt; };
    EXPECT_EQ(after(put(noteItem(1, noon - 1s))), noon);
    EXPECT_EQ(after(put(noteItem(2, noon + 7s))), noon + 7s);
    EXPECT_EQ(after(takeDown(1, noon + 8s)), noon + 8s);
    EXPECT_EQ(after(takeDown(1, noon - 8s)), noon);
    EXPECT_EQ(after({SetBackground{BackgroundID::oat}}), noon + 1h);
}

// Random histories: what the rules promise whatever the ops are.
TEST(Apply, R2_R3_R10_RandomBatchesKeepThePromisesOfTheRules) {
    samples::Random random{1};
    std::size_t rejected = 0;
    for (int round = 0; round < 400; ++round) {
        const Board board = samples::anyBoard(random, samples::pick(random, std::size_t{0}, std::size_t{8}));
        std::vector<Op> ops;
        for (int i = samples::pick(random, 1, 30); i > 0; --i) ops.push_back(samples::anyOp(random, 10));
        const auto result = BoardLogic::apply(ops, board, noon);
        ASSERT_EQ(result.applied.size() + result.rejected.size(), ops.size());
        rejected += result.rejected.size();

        // A board is a function of the ops that applied, and each upsert among them is stale the second time.
        const auto again = BoardLogic::apply(result.applied, board, noon);
        ASSERT_EQ(again.board, result.board);
        ASSERT_TRUE(again.rejected.empty());
        for (const auto& item : result.board.items) {
            const auto replay = BoardLogic::apply(std::vector{put(item)}, result.board, noon);
            ASSERT_EQ(reasons(replay), Reasons{RejectionReason::stale});
            ASSERT_EQ(replay.board, result.board);
        }
    }
    EXPECT_GT(rejected, 500U);
}

TEST(Apply, R10_ConcurrentUpsertsGiveOneBoardInEitherOrder) {
    samples::Random random{2};
    for (int round = 0; round < 1000; ++round) {
        Board board = samples::anyBoard(random, 3);
        if (samples::chance(random, 0.3)) board.tombstones[numberedId(4)] = noon;
        const auto id = numberedId(samples::pick(random, std::uint64_t{1}, std::uint64_t{4}));
        auto first = samples::anyItem(random, id);
        auto second = samples::anyItem(random, id);
        if (samples::chance(random, 0.5)) second.updatedAt = first.updatedAt;
        first.author = PartnerID::a;
        second.author = PartnerID::b;
        const auto one = apply({put(first), put(second)}, board).board;
        const auto other = apply({put(second), put(first)}, board).board;
        ASSERT_EQ(one.items, other.items);
        ASSERT_EQ(one.tombstones, other.tombstones);
    }
}

} // namespace
} // namespace lumaro
