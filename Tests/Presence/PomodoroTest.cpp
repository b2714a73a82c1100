// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Pomodoro.h"

#include "Samples/Samples.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using enum PartnerID;
using Pomodoro::Face;
using samples::noon;

const PomodoroPayload resting{};
const PomodoroPayload block = Pomodoro::started(resting, 25, a, noon);

TEST(Pomodoro, ABlockLastsBetweenOneMinuteAndThreeHours) {
    EXPECT_EQ(Pomodoro::started(resting, 0, a, noon).minutes, 1);
    EXPECT_EQ(Pomodoro::started(resting, 240, a, noon).minutes, 180);
    EXPECT_EQ(Pomodoro::started(resting, 40, a, noon).minutes, 40);
}

TEST(Pomodoro, OnlyTheOtherPersonJoinsAndOnlyOnce) {
    EXPECT_EQ(Pomodoro::joined(block, a, noon + 1s), block);
    EXPECT_EQ(Pomodoro::joined(resting, b, noon), resting);
    const auto shared = Pomodoro::joined(block, b, noon + 1s);
    EXPECT_EQ(shared.joinedAt, noon + 1s);
    EXPECT_EQ(Pomodoro::joined(shared, b, noon + 9s), shared);
    EXPECT_TRUE(Pomodoro::isShared(shared));
    EXPECT_FALSE(Pomodoro::started(shared, 5, b, noon).joinedAt.has_value());
}

TEST(Pomodoro, TheFaceFollowsTheClock) {
    const auto coolDown = Pomodoro::coolingDown(block, b, noon);
    struct Case {
        PomodoroPayload timer;
        Microseconds passed;
        Face face;
    };
    const Case cases[]{{block, 24min + 59s, Face::running}, {block, 25min, Face::rung},
                       {block, 25min + 3599s, Face::rung},  {block, 25min + 3600s, Face::resting},
                       {block, -1h, Face::running},         {coolDown, 14min, Face::running},
                       {coolDown, 15min, Face::resting},    {resting, 0s, Face::resting}};
    for (const auto& [timer, passed, face] : cases) {
        EXPECT_EQ(Pomodoro::face(timer, noon + passed), face) << passed.count();
    }
}

TEST(Pomodoro, RestingKeepsTheLengthOfWorkAndForgetsThatOfACoolDown) {
    EXPECT_EQ(Pomodoro::rested(Pomodoro::started(resting, 40, a, noon)).minutes, 40);
    const auto rested = Pomodoro::rested(Pomodoro::coolingDown(Pomodoro::started(resting, 40, a, noon), b, noon));
    EXPECT_EQ(rested, resting);
}

TEST(Pomodoro, ReadingsStayInTheirRange) {
    EXPECT_EQ(Pomodoro::remaining(block, noon + 500ms), 1499.5);
    EXPECT_EQ(Pomodoro::remaining(block, noon + 1h), 0);
    EXPECT_EQ(Pomodoro::remaining(resting, noon), 0);
    EXPECT_EQ(Pomodoro::progress(block, noon - 1s), 0);
    EXPECT_EQ(Pomodoro::progress(block, noon + 15min), 0.6);
    EXPECT_EQ(Pomodoro::progress(block, noon + 2h), 1);
    EXPECT_EQ(Pomodoro::progress(resting, noon), 0);
}

TEST(Pomodoro, WhoTakesPart) {
    const auto shared = Pomodoro::joined(block, b, noon);
    EXPECT_TRUE(Pomodoro::includes(block, a));
    EXPECT_FALSE(Pomodoro::includes(block, b));
    EXPECT_TRUE(Pomodoro::includes(shared, b));
    EXPECT_FALSE(Pomodoro::includes(Pomodoro::rested(shared), a));
}

TEST(PomodoroFormatting, RoundsUpToWholeSeconds) {
    const std::pair<double, const char*> cases[]{{1500, "25:00"}, {59.2, "1:00"},  {61, "1:01"},     {0, "0:00"},
                                                 {-5, "0:00"},    {0.001, "0:01"}, {10800, "180:00"}};
    for (const auto& [seconds, figure] : cases) EXPECT_EQ(PomodoroFormatting::figure(seconds), figure);
    EXPECT_EQ(PomodoroFormatting::figure(std::numeric_limits<double>::quiet_NaN()), "0:00");
}

} // namespace
} // namespace lumaro
