// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/CanvasInView.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

constexpr double slack = 1e-6;

TEST(CanvasInViewTest, OnAScreenOfAnyShapeAllOfAnItemIsInSight) {
    for (const QSizeF screen : {QSizeF{1280, 800}, QSizeF{1366, 768}, QSizeF{2560, 1080}, QSizeF{1280, 1024},
                                QSizeF{768, 1366}, QSizeF{600, 1024}}) {
        const auto canvas = CanvasLayout::aspectFill({{0, 0}, screen});
        const auto whole = CanvasLayout::aspectFit({{0, 0}, screen});
        EXPECT_LE(canvas.scale(), 1.3 * whole.scale() + slack);
        // The middle stays where it is, and something that is nowhere near an edge keeps its neighbours.
        EXPECT_NEAR(canvas.viewX(800) + canvas.viewX(800 + canvas.inwardX(800, 140)), screen.width(), slack);
        double before = -1;
        for (double x = 0; x <= 1600; x += 50) {
            const double middle = canvas.viewX(x + canvas.inwardX(x, 160));
            EXPECT_GE(middle - 160 * canvas.scale(), -slack) << x;
            EXPECT_LE(middle + 160 * canvas.scale(), screen.width() + slack) << x;
            EXPECT_GE(middle, before) << x;
            before = middle;
        }
        for (double y = 0; y <= 1000; y += 50) {
            const double middle = canvas.viewY(y + canvas.inwardY(y, 160));
            EXPECT_GE(middle - 160 * canvas.scale(), -slack) << y;
            EXPECT_LE(middle + 160 * canvas.scale(), screen.height() + slack) << y;
        }
        EXPECT_NEAR(canvas.viewX(300 + canvas.inwardX(300, 5000)), screen.width() / 2, slack);
    }
    // Of the canvas's own shape: nothing but what hangs over an edge moves.
    const auto own = CanvasLayout::aspectFill({0, 0, 1280, 800});
    EXPECT_EQ(own.inwardX(200, 140), 0);
    EXPECT_EQ(own.inwardX(100, 140), 40);
}

} // namespace
} // namespace lumaro
