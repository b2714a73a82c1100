// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkSmoothing.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>

namespace lumaro {
namespace {

using Points = std::vector<Point>;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

double distanceToLine(Point p, const Points& line) {
    double nearest = distance(p, line.front());
    for (std::size_t i = 1; i < line.size(); ++i) {
        nearest = std::min(nearest, segmentDistance(p, line[i - 1], line[i]));
    }
    return nearest;
}

Points wander(std::mt19937_64& random, std::size_t count, double stride) {
    std::normal_distribution<double> step{0, stride};
    Points points{{800, 500}};
    while (points.size() < count) points.push_back(points.back() + Point{step(random), step(random)});
    return points;
}

TEST(Simplified, ALineThatPeelsOffPointByPointIsNotQuadratic) {
    // In a fading zigzag the farthest point is always the next one: 200,000 levels, were ranges only split there, and
    // twenty thousand million distances; the limit on a test's run does not allow them.
    Points line;
    for (int i = 0; i < 200000; ++i) line.push_back({(i % 2 == 0 ? 1 : -1) * (2 - i / 200000.0), 0.0});
    EXPECT_EQ(simplified(line, 1e-6).size(), line.size());
}

TEST(InkStroke, KeepsItsEndsAndLosesThePixelSteps) {
    // A mouse draws a slope of one in five as steps of a whole point.
    Points raw;
    for (int x = 0; x <= 200; ++x) raw.push_back({static_cast<double>(x), std::round(x / 5.0)});
    const InkStroke stroke = inkStroke(raw, "black", 4);
    EXPECT_EQ(stroke.points.front(), (Point{0, 0}));
    EXPECT_EQ(stroke.points.back(), (Point{200, 40}));
    EXPECT_LT(stroke.points.size(), 20U);
    for (const Point p : stroke.points) EXPECT_NEAR(p.y, p.x / 5, 0.45);
}

TEST(InkStroke, DoesNotShrinkCurvesWhateverTheirSizeAndThePointersRate) {
    for (const double radius : {2.0, 8.0, 40.0, 300.0}) {
        for (const int count : {60, 5000}) {
            Points raw;
            for (int i = 0; i < count; ++i) {
                raw.push_back(Point{std::cos(6.0 * i / count), std::sin(6.0 * i / count)} * radius);
            }
            const InkStroke stroke = inkStroke(raw, "black", 4);
            for (const Point p : raw) {
                ASSERT_LT(distanceToLine(p, stroke.points), 0.5) << "radius " << radius << ", " << count << " points";
            }
        }
    }
}

TEST(InkStroke, IsRoundedAndNeverOverTheCap) {
    std::mt19937_64 random{3};
    for (const double stride : {3.0, 40.0, 200.0}) {
        const Points raw = wander(random, 200000, stride);
        const InkStroke stroke = inkStroke(raw, "black", 2);
        EXPECT_GT(stroke.points.size(), 100U);
        EXPECT_LE(stroke.points.size(), BoardSpec::maxPointsPerStroke);
        for (const Point p : stroke.points) ASSERT_EQ(p, roundedInk(p));
    }
}

TEST(InkStroke, TakesOddInput) {
    struct Case {
        const char* what;
        Points raw;
        Points expected;
    };
    const std::array cases{
        Case{"nothing", {}, {}},
        Case{"no number, or huge", {{notANumber, 1}, {1, notANumber}, {1e308, -1e308}}, {}},
        Case{"a dot", {{3.14, -0.01}}, {{3.1, 0}}},
        Case{"less than a rounding apart", {{3, 4}, {3, 4}, {3.001, 4}, {3, 4.001}}, {{3, 4}}},
        Case{"faults on the way", {{0, 0}, {1e308, 0}, {notANumber, 0}, {100, 50}}, {{0, 0}, {100, 50}}},
    };
    for (const auto& [what, raw, expected] : cases) EXPECT_EQ(inkStroke(raw, "black", 3).points, expected) << what;
    for (const double width : {0.0, -3.0, notANumber, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(inkStroke({}, "black", width).width, minInkWidth) << width;
    }
}

} // namespace
} // namespace lumaro
