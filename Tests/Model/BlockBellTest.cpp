// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BlockBell.h"

#include "LumaroCore/Presence/Pomodoro.h"
#include "Tests/Fakes/ManualClock.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace lumaro {
namespace {

using std::chrono::minutes;

class BlockBellTest : public testing::Test {
protected:
    // The board with a block of `a` for each length, all started at the start.
    void watch(std::initializer_list<std::int64_t> lengths, PartnerID slot = PartnerID::a) {
        Board board;
        for (const auto length : lengths) {
            board.items.emplace_back().payload = Pomodoro::started({}, length, PartnerID::a, start_);
        }
        bell_.watch(board, slot);
    }
    Instant after(std::int64_t count) const { return start_ + minutes{count}; }
    void pass(std::int64_t count) { sleeper_.advance(minutes{count}); }

    const Instant start_{std::chrono::seconds{1'790'000'000}};
    ManualSleeper sleeper_;
    ManualClock clock_{sleeper_, start_};
    std::vector<Instant> rung_;
    BlockBell bell_{sleeper_, clock_, [this](Instant end) { rung_.push_back(end); }};
};

TEST_F(BlockBellTest, EachEndRingsOnceWhicheverCardHasIt) {
    watch({50, 25, 25, 90});
    pass(25);
    EXPECT_EQ(rung_, std::vector{after(25)}) << "two cards with one end ring once";
    watch({50, 25, 25, 90});
    pass(25);
    EXPECT_EQ(rung_, (std::vector{after(25), after(50)})) << "the second card rings without a change of the board";
    watch({25, 50});
    pass(120);
    EXPECT_EQ(rung_.size(), 2U) << "a card that was taken down is silent";
}

TEST_F(BlockBellTest, OnlyThoseInTheBlockHearIt) {
    watch({25}, PartnerID::b);
    pass(30);
    EXPECT_TRUE(rung_.empty());
    watch({25});
    pass(120);
    EXPECT_TRUE(rung_.empty()) << "it was not seen running";
}

TEST_F(BlockBellTest, EndsThatWereSleptOverRingOnWakingWithinTheHour) {
    watch({10, 30, 100});
    clock_.shift(minutes{80});
    watch({10, 30, 100});
    EXPECT_EQ(rung_, std::vector{after(30)}) << "the first one is over an hour ago";
    pass(20);
    EXPECT_EQ(rung_, (std::vector{after(30), after(100)}));
}

TEST_F(BlockBellTest, AClockThatIsSetIsNoticedWithinAMinuteAndRingsNothingTwice) {
    watch({25});
    clock_.shift(minutes{25});
    pass(1);
    EXPECT_EQ(rung_, std::vector{after(25)});
    clock_.shift(-minutes{20});
    watch({25});
    pass(60);
    EXPECT_EQ(rung_.size(), 1U);
    watch({120});
    clock_.shift(-minutes{30});
    pass(60);
    EXPECT_EQ(rung_.size(), 1U) << "a clock that goes back lengthens the wait";
    pass(30);
    EXPECT_EQ(rung_.size(), 2U);
}

} // namespace
} // namespace lumaro
