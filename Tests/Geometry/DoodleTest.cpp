// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/Doodle.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Support/Wire.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>

namespace lumaro {
namespace {

using Strokes = std::vector<InkStroke>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

InkStroke wildStroke(std::mt19937_64& random, std::size_t points, double jump) {
    std::uniform_real_distribution<double> start{300, 1200};
    std::uniform_real_distribution<double> step{-jump, jump};
    InkStroke stroke{"red", 3, {{start(random), start(random)}}};
    while (stroke.points.size() < points) {
        stroke.points.push_back(stroke.points.back() + Point{step(random), step(random)});
    }
    return stroke;
}

void expectWithinCaps(const DoodlePayload& doodle) {
    EXPECT_LE(Wire::encode(doodle.strokes)->size(), BoardSpec::doodleBudgetBytes);
    EXPECT_LE(std::max(doodle.width, doodle.height), BoardSpec::maxDoodleSide);
    for (const auto& stroke : doodle.strokes) {
        EXPECT_LE(stroke.points.size(), BoardSpec::maxPointsPerStroke);
        for (const Point p : stroke.points) {
            ASSERT_TRUE(p.x >= 0 && p.x <= doodle.width && p.y >= 0 && p.y <= doodle.height) << p.x << ", " << p.y;
        }
    }
}

TEST(Doodle, ItsBoxHoldsTheLinesWithTheirWidthsAndCanBeTouched) {
    const auto placed = makeDoodle({{"red", 4, {{100, 200}, {150, 260}}}, {"blue", 10, {{160, 230}}}}, std::nullopt);
    ASSERT_TRUE(placed);
    EXPECT_EQ(placed->payload.size(), (Size{67, 64}));
    EXPECT_EQ(placed->center, (Point{131.5, 230}));
    EXPECT_EQ(placed->payload.strokes[0].points, (std::vector<Point>{{2, 2}, {52, 62}}));

    const auto dot = makeDoodle({{"red", notANumber, {{notANumber, 0}, {400, 300}}}, {"red", 2, {}}}, std::nullopt);
    ASSERT_TRUE(dot);
    EXPECT_EQ(dot->payload.size(), (Size{minDoodleSide, minDoodleSide}));
    EXPECT_LE(distance(dot->center, {400, 300}), 0.1);
    EXPECT_EQ(dot->payload.strokes.size(), 1U);
}

TEST(Doodle, WhatDoesNotFitIsATypedFault) {
    struct Case {
        const char* what;
        Strokes strokes;
        DoodleFault fault;
    };
    std::mt19937_64 random{4};
    const std::array cases{
        Case{"nothing", {}, DoodleFault::empty},
        Case{"no usable point", {{"red", 2, {{notANumber, 0}}}}, DoodleFault::empty},
        Case{"401 dots", Strokes(401, {"red", 2, {{5, 5}}}), DoodleFault::tooManyStrokes},
        Case{"wider than the cap with its line", {{"red", 2, {{0, 0}, {1999, 0}}}}, DoodleFault::tooLarge},
        Case{"huge coordinates", {{"red", 2, {{-1e308, 0}, {1e308, 0}}}}, DoodleFault::tooLarge},
        Case{"small but nowhere near", {{"red", 2, {{1e17, 0}}}}, DoodleFault::tooLarge},
        Case{"a huge line", {{"red", 1e308, {{0, 0}}}}, DoodleFault::tooLarge},
        Case{"what no tolerance thins", Strokes(40, wildStroke(random, 300, 20)), DoodleFault::tooMuchInk},
    };
    for (const auto& [what, strokes, fault] : cases) {
        const auto made = makeDoodle(strokes, std::nullopt);
        ASSERT_FALSE(made) << what;
        EXPECT_EQ(made.error(), fault) << what;
    }
    EXPECT_EQ(makeDoodle({{"red", 2, {{-100.9, 0.3}, {1897.1, 0.3}}}}, {})->payload.width, BoardSpec::maxDoodleSide);
}

TEST(Doodle, FourHundredWildStrokesAreWithinEveryCapOrRefused) {
    std::mt19937_64 random{5};
    int made = 0;
    for (const double jump : {0.05, 0.5, 3.0, 30.0}) {
        for (const std::size_t points : {2U, 8U, 40U}) {
            Strokes strokes{wildStroke(random, 5000, jump)};
            while (strokes.size() < 400) strokes.push_back(wildStroke(random, points, jump));
            const auto placed = makeDoodle(std::move(strokes), std::nullopt);
            if (!placed) continue;
            ++made;
            expectWithinCaps(placed->payload);
        }
    }
    EXPECT_TRUE(made >= 4 && made <= 10) << "all alike: " << made;
}

TEST(Doodle, ComesBackWhereItWasDrawn) {
    std::mt19937_64 random{6};
    for (int round = 0; round < 50; ++round) {
        const Strokes strokes{wildStroke(random, 30, 20), wildStroke(random, 1, 1), wildStroke(random, 90, 5)};
        const auto placed = makeDoodle(strokes, std::nullopt);
        ASSERT_TRUE(placed);
        const Strokes back = canvasStrokes(placed->payload, placed->center, 0, 1);
        for (std::size_t i = 0; i < strokes.size(); ++i) {
            ASSERT_EQ(back.at(i).points.size(), strokes[i].points.size());
            for (std::size_t j = 0; j < strokes[i].points.size(); ++j) {
                ASSERT_LE(distance(back[i].points[j], strokes[i].points[j]), 0.1);
            }
        }
        EXPECT_TRUE(makeDoodle(back, std::nullopt) == placed) << "it creeps when it is made anew";
    }
}

TEST(Doodle, IsScaledAndTurnedClockwiseAboutItsCentre) {
    const DoodlePayload doodle{40, 20, {{"red", 3, {{40, 10}, {20, 20}}}}, std::nullopt};
    const Strokes strokes = canvasStrokes(doodle, {100, 100}, 90, 2);
    EXPECT_EQ(strokes[0].width, 6);
    EXPECT_LT(distance(strokes[0].points[0], {100, 140}), 1e-9);
    EXPECT_LT(distance(strokes[0].points[1], {80, 100}), 1e-9);
    EXPECT_TRUE(canvasStrokes(doodle, {notANumber, 0}, 0, 1).empty());
}

} // namespace
} // namespace lumaro
