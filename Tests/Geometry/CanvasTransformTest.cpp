// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/CanvasTransform.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace lumaro {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double largest = std::numeric_limits<double>::max();

TEST(CanvasTransform, LiesInTheMiddleOfAnyViewAndShowsNothingInOneWithoutArea) {
    struct Case {
        Rect view;
        CanvasTransform fit;
        CanvasTransform fill;
    };
    const std::array cases{
        Case{{{0, 0}, {800, 800}}, {0.5, {0, 150}}, {0.8, {-240, 0}}},
        Case{{{-100, 40}, {3200, 1000}}, {1, {700, 40}}, {2, {-100, -460}}},
        Case{{{10, 20}, {0, 40}}, {0, {10, 40}}, {0, {10, 40}}},
        Case{{{0, 0}, {infinity, 100}}, {0, {0, 0}}, {0, {0, 0}}},
        Case{{{notANumber, 0}, {100, 100}}, {0, {0, 0}}, {0, {0, 0}}},
        Case{{{largest, 0}, {largest, 1}}, {0, {0, 0}}, {0, {0, 0}}},
    };
    for (const auto& [view, fit, fill] : cases) {
        EXPECT_EQ(VirtualCanvas::aspectFit(view), fit) << view.origin.x << ", " << view.size.width;
        EXPECT_EQ(VirtualCanvas::aspectFill(view), fill) << view.origin.x << ", " << view.size.width;
    }
    EXPECT_TRUE(isFinite(VirtualCanvas::aspectFill({{0, 0}, {largest, largest}}).offset));
}

TEST(CanvasTransform, TheWayBackUndoesTheWayThereAndTheMatrixIsTheWayThere) {
    const CanvasTransform transform{0.25, {30, -40}};
    const Rect rect{{12, 20}, {8, 16}};
    const Rect inView{{33, -35}, {2, 4}};
    EXPECT_EQ(transform.viewRect(rect), inView);
    EXPECT_EQ(transform.virtualRect(inView), rect);
    EXPECT_EQ(transform.virtualLength(transform.viewLength(12)), 12);
    const Affine matrix = transform.affine();
    EXPECT_EQ(matrix.m11 * 12 + matrix.m21 * 20 + matrix.dx, inView.origin.x);
    EXPECT_EQ(matrix.m12 * 12 + matrix.m22 * 20 + matrix.dy, inView.origin.y);
}

TEST(CanvasTransform, WithoutAPositiveScaleTheWayBackGivesZeros) {
    for (const double scale : {0.0, -1.0, notANumber}) {
        const CanvasTransform transform{scale, {7, 9}};
        EXPECT_EQ(transform.virtualRect({{3, 4}, {5, 6}}), Rect{});
        EXPECT_EQ(transform.virtualLength(3), 0);
    }
}

} // namespace
} // namespace lumaro
