// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/ItemGlow.h"

#include <QtGui/QPainter>
#include <gtest/gtest.h>

namespace lumaro {
namespace {

/// How strong the light around an item of that face is, from 0 to 255, at a place of its paper.
class Light {
public:
    Light(const ItemFace& face, QSizeF size) {
        glow_.setNaturalSize(size);
        glow_.setFace(face);
        glow_.setSize({glow_.implicitWidth(), glow_.implicitHeight()});
        picture_ = QImage{glow_.size().toSize(), QImage::Format_ARGB32_Premultiplied};
        picture_.fill(Qt::transparent);
        QPainter painter{&picture_};
        glow_.paint(painter);
    }

    int at(double x, double y) const {
        return qAlpha(picture_.pixel(qRound(x + glow_.reach()), qRound(y + glow_.reach())));
    }
    double reach() const { return glow_.reach(); }

private:
    ItemGlow glow_;
    QImage picture_;
};

TEST(ItemGlowTest, LightIsStrongAtThePapersEdgeAndFadesOutwardsToNothing) {
    const Light light{NoteFace{}, {200, 200}};
    int before = 255;
    for (double away = 1; away < light.reach(); away += 3) {
        const int here = light.at(100, 200 + away);
        EXPECT_LE(here, before) << away;
        EXPECT_NEAR(light.at(100, -away), here, 24) << away;
        EXPECT_LT(before - here, 80) << "an edge at " << away;
        before = here;
    }
    EXPECT_GT(light.at(100, 202), 150);
    EXPECT_LT(before, 6);
}

TEST(ItemGlowTest, LightFollowsInkAndNotItsBox) {
    // From the top left corner to the bottom right one.
    const InkStroke stroke{.ink = "coral", .width = 10, .points = {{10, 10}, {190, 190}}};
    const Light light{DoodleFace{{.width = 200, .height = 200, .strokes = {stroke}, .on = {}}}, {200, 200}};
    EXPECT_GT(light.at(100, 108), 100);
    EXPECT_LT(light.at(190, 10), 4);
}

} // namespace
} // namespace lumaro
