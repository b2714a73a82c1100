// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/BoardDiff.h"

#include "Samples/Samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using Rows = std::vector<std::size_t>;

// Does to a list of rows what a view does that follows the diff.
std::vector<BoardItem> follow(std::vector<BoardItem> rows, const BoardDiff& diff, const Board& after) {
    const auto at = [&](std::size_t row) { return rows.begin() + static_cast<std::ptrdiff_t>(row); };
    for (const auto row : diff.removed) rows.erase(at(row));
    for (const auto& [from, to] : diff.reordered) {
        auto item = rows[from];
        rows.erase(at(from));
        rows.insert(at(to), std::move(item));
    }
    for (const auto row : diff.added) rows.insert(at(row), after.items[row]);
    for (const auto* list : {&diff.moved, &diff.changed, &diff.restamped}) {
        for (const auto row : *list) rows.at(row) = after.items[row];
    }
    return rows;
}

TEST(BoardDiff, AViewThatFollowsItShowsTheSecondBoard) {
    samples::Random random{4};
    std::size_t reorders = 0;
    for (int round = 0; round < 2000; ++round) {
        const Board before = samples::anyBoard(random, samples::pick(random, std::size_t{0}, std::size_t{12}));
        Board after = before;
        std::erase_if(after.items, [&](const BoardItem&) { return samples::chance(random, 0.2); });
        for (auto& item : after.items) {
            if (samples::chance(random, 0.3)) item = samples::anyItem(random, item.id);
        }
        // New items, and now and then an id that stands twice.
        for (int i = samples::pick(random, 0, 3); i > 0; --i) {
            after.items.push_back(samples::anyItem(random, samples::numberedId(samples::pick(random, 5U, 20U))));
        }
        if (samples::chance(random, 0.3)) std::ranges::shuffle(after.items, random);
        const auto diff = BoardLogic::diff(before, after);
        reorders += diff.reordered.size();
        ASSERT_EQ(follow(before.items, diff, after), after.items) << round;
        ASSERT_TRUE(BoardLogic::diff(after, after).isEmpty());
    }
    EXPECT_GT(reorders, 500U);
}

TEST(BoardDiff, TellsWhatHappenedToAnItem) {
    samples::Random random{5};
    Board before = samples::anyBoard(random, 4);
    before.items[1].payload = samples::plainNote("hi");
    Board after = before;
    after.items[0].z += 1;
    after.items[1].payload = samples::plainNote("ho");
    after.items[1].center.x += 1;
    after.items[2].updatedAt += 1ms;
    after.items[3].author = other(after.items[3].author);
    after.background = static_cast<BackgroundID>((std::to_underlying(after.background) + 1) % 6);
    after.threadTiedAt = samples::noon + 1h;
    const auto diff = BoardLogic::diff(before, after);
    EXPECT_EQ(diff.moved, (Rows{0, 1}));
    EXPECT_EQ(diff.changed, Rows{1});
    EXPECT_EQ(diff.restamped, (Rows{2, 3}));
    EXPECT_TRUE(diff.background);
    EXPECT_TRUE(diff.thread);
    EXPECT_TRUE(diff.added.empty() && diff.removed.empty() && diff.reordered.empty());
}

} // namespace
} // namespace lumaro
