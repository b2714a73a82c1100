// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/FrameRoom.h"

#include <QtGui/QTransform>
#include <gtest/gtest.h>

#include <random>

namespace lumaro {
namespace {

constexpr QRectF room{8, 8, 1184, 700};

TEST(FrameRoomTest, TheBarLiesUnderTheFrameThenOverItThenBesideIt) {
    constexpr QSizeF bar{400, 48};
    EXPECT_EQ(FrameRoom::besides(bar, {500, 200, 200, 200}, 0, room), QPointF(400, 426));
    EXPECT_EQ(FrameRoom::besides(bar, {500, 480, 200, 200}, 0, room), QPointF(400, 388));
    EXPECT_EQ(FrameRoom::besides(bar, {300, 40, 200, 660}, 0, room), QPointF(526, 337));
    EXPECT_EQ(FrameRoom::besides(bar, {800, 40, 200, 660}, 0, room), QPointF(374, 337));
    EXPECT_EQ(FrameRoom::besides(bar, {10, 200, 200, 200}, 0, room).x(), room.left());
}

TEST(FrameRoomTest, TheBarIsWholeAndCoversNoHandleThatItCanLeaveUncovered) {
    std::mt19937_64 random{11};
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>{low, high}(random);
    };
    int inside = 0;
    for (int run = 0; run < 400; ++run) {
        const QSizeF bar{between(100, 520), between(48, 110)};
        const QRectF frame{between(-300, 300), between(-200, 200), between(600, 1600), between(400, 1200)};
        const double tilt = between(-15, 15);
        const QRectF place{FrameRoom::besides(bar, frame, tilt, room), bar};
        EXPECT_TRUE(room.contains(place)) << run;
        if (!place.intersects(FrameRoom::reach(frame, tilt))) continue;
        ++inside;
        const auto middle = frame.center();
        const auto turn =
            QTransform::fromTranslate(middle.x(), middle.y()).rotate(tilt).translate(-middle.x(), -middle.y());
        for (const auto& at : {frame.topLeft(), frame.topRight(), frame.bottomLeft(), frame.bottomRight(),
                               QPointF{middle.x(), frame.top() - 18}}) {
            EXPECT_FALSE(place.contains(turn.map(at))) << run;
        }
    }
    EXPECT_GT(inside, 40);
}

} // namespace
} // namespace lumaro
