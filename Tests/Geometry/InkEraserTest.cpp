// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkEraser.h"
#include "LumaroCore/Geometry/InkLine.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <limits>
#include <random>

namespace lumaro {
namespace {

using Strokes = std::vector<InkStroke>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
const InkStroke line{"red", 4, {{0, 0}, {100, 0}}};
const InkStroke broken{"red", 2, {{0, 0}, {100, 0}, {notANumber, 0}, {200, 0}, {300, 0}, {1e300, 0}, {400, 0}}};

bool sameBits(const InkStroke& a, const InkStroke& b) {
    return a.points.size() == b.points.size() &&
           std::memcmp(a.points.data(), b.points.data(), a.points.size() * sizeof(Point)) == 0;
}

// The length of a stroke that counts, by dense sampling: an oracle that shares nothing with the interval.
double sampledLength(const InkStroke& stroke, const auto& counts) {
    constexpr int samples = 1000;
    double length = 0;
    for (std::size_t i = 1; i < stroke.points.size(); ++i) {
        const double step = distance(stroke.points[i - 1], stroke.points[i]) / samples;
        for (int k = 0; k < samples; ++k) {
            if (counts(between(stroke.points[i - 1], stroke.points[i], (k + 0.5) / samples))) length += step;
        }
    }
    return length;
}

TEST(InkHit, CountsHalfTheLinesWidthAndNothingAcrossAFault) {
    struct Case {
        const InkStroke& stroke;
        Point point;
        double radius = 0;
        bool hit = false;
    };
    const std::array cases{
        Case{line, {50, 1.9}, 0, true},         Case{line, {50, 2.1}, 0, false},       Case{line, {50, 6.9}, 5, true},
        Case{line, {50, -7.1}, 5, false},       Case{line, {104, 0}, 2.5, true},       Case{line, {50, 0}, -1, false},
        Case{line, {50, 0}, notANumber, false}, Case{line, {notANumber, 0}, 5, false}, Case{broken, {150, 0}, 9, false},
        Case{broken, {250, 0}, 9, true},        Case{broken, {350, 0}, 9, false},      Case{broken, {400, 0}, 9, true},
    };
    for (const auto& [stroke, point, radius, hit] : cases) {
        EXPECT_EQ(inkHit(stroke, point, radius), hit) << point.x << ", " << point.y << " within " << radius;
    }
}

TEST(InkEraser, CutsWhereTheEdgeOfItsWayCrossesTheLine) {
    struct Case {
        const char* what;
        InkStroke stroke;
        Point from;
        Point to;
        std::vector<std::vector<Point>> left;
    };
    const std::array cases{
        Case{"across", line, {50, -30}, {50, 30}, {{{0, 0}, {40, 0}}, {{60, 0}, {100, 0}}}},
        Case{"all but a crumb", line, {11.9, 0}, {120, 0}, {}},
        Case{"just touching", line, {0, 10}, {100, 10}, {{{0, 0}, {100, 0}}}},
        Case{"faults end a piece", broken, {-5, 0}, {-5, 0}, {{{5, 0}, {100, 0}}, {{200, 0}, {300, 0}}}},
        Case{"a dot", {"red", 2, {{50, 5}}}, {45, 0}, {55, 0}, {}},
        Case{"no length", {"red", 2, {{50, 5}, {50, 5}, {50, 5}}}, {45, 0}, {55, 0}, {}},
    };
    for (const auto& [what, stroke, from, to, left] : cases) {
        const Strokes strokes = eraseInk(std::array{stroke}, from, to, 10);
        ASSERT_EQ(strokes.size(), left.size()) << what;
        for (std::size_t i = 0; i < left.size(); ++i) {
            ASSERT_EQ(strokes[i].points.size(), left[i].size()) << what;
            for (std::size_t j = 0; j < left[i].size(); ++j) {
                EXPECT_LT(distance(strokes[i].points[j], left[i][j]), 1e-9) << what;
            }
        }
    }
}

TEST(InkEraser, LeavesExactlyWhatLiesOutsideItsWay) {
    std::mt19937_64 random{7};
    std::uniform_real_distribution<double> place{0, 200};
    std::size_t pieces = 0;
    for (int round = 0; round < 300; ++round) {
        InkStroke stroke{"red", minInkWidth, {}};
        while (stroke.points.size() < 8) stroke.points.push_back({place(random), place(random)});
        const Point from{place(random), place(random)};
        const Point to = round % 4 == 0 ? from : Point{place(random), place(random)};
        const double radius = 1 + place(random) / 10;
        const auto isOutside = [&](Point p) { return segmentDistance(p, from, to) >= radius - 1e-9; };
        double length = 0;
        for (const auto& piece : eraseInk(std::array{stroke}, from, to, radius)) {
            for (const Point p : piece.points) ASSERT_TRUE(isOutside(p)) << round;
            length += sampledLength(piece, isOutside);
            ++pieces;
        }
        // Sampling errs at the edges of each segment; crumbs are short.
        ASSERT_NEAR(length, sampledLength(stroke, isOutside), 3) << round;
    }
    EXPECT_GT(pieces, 600U);
}

TEST(InkEraser, UntouchedStrokesStayBitForBitAndInOrder) {
    const InkStroke faulty{"green", notANumber, {{notANumber, 0}, {50, 20}, {1e308, -1e308}, {-0.0, 90}}};
    const InkStroke wideDot{"blue", 40, {{50, 11}}};
    const Strokes left = eraseInk(Strokes{wideDot, line, faulty, {"red", 2, {}}}, {50, 0}, {50, 0}, 10);
    ASSERT_EQ(left.size(), 5U);
    EXPECT_TRUE(sameBits(left[0], wideDot));
    EXPECT_TRUE(sameBits(left[3], faulty));
    EXPECT_TRUE(left[4].points.empty());
}

TEST(InkEraser, ATipThatIsNowhereOrHasNoSizeErasesNothing) {
    const Strokes strokes{line};
    for (const double radius : {0.0, -5.0, notANumber}) EXPECT_EQ(eraseInk(strokes, {0, 0}, {100, 0}, radius), strokes);
    EXPECT_EQ(eraseInk(strokes, {notANumber, 0}, {100, 0}, 5), strokes);
    EXPECT_EQ(eraseInk(strokes, {0, 0}, {1e308, 0}, 5), strokes);
}

} // namespace
} // namespace lumaro
