// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/ViewPainting.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

namespace lumaro {
namespace {

constexpr QSize glass{248, 170};

QImage picture(const SkyView& view) {
    QImage image{glass, QImage::Format_RGB32};
    QPainter painter{&image};
    paintView(painter, QRectF{{0, 0}, QSizeF{glass}}, view);
    return image;
}

double brightness(const QImage& image, const QRect& part) {
    double sum = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) sum += qGray(image.pixel(x, y));
    }
    return sum / (part.width() * part.height());
}

/// Where the picture is brightest, over the roofs.
QPoint brightest(const QImage& image) {
    QPoint best;
    double most = -1;
    constexpr int side = 9;
    for (int y = 0; y + side < glass.height() * 6 / 10; y += 3) {
        for (int x = 0; x + side < glass.width(); x += 3) {
            const double here = brightness(image, {x, y, side, side});
            if (here > most) {
                most = here;
                best = {x + side / 2, y + side / 2};
            }
        }
    }
    return best;
}

int lamps(const QImage& image) {
    int count = 0;
    for (int y = glass.height() / 2; y < glass.height(); ++y) {
        for (int x = 0; x < glass.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            count += colour.red() > 200 && colour.blue() < colour.red() - 40 ? 1 : 0;
        }
    }
    return count;
}

/// A clear night over a city, without a moon.
SkyView night() {
    SkyView view;
    view.sky = Sky::night;
    view.sunAltitude = -30;
    view.hour = 21;
    view.scenery = {.seed = 7, .people = 900'000, .isByTheSea = false, .hills = 1};
    return view;
}

TEST(WindowView, TheSunGoesFromEastToWestAsItIsSeenFromEitherHemisphere) {
    SkyView view;
    view.sunAltitude = 40;
    const auto sunAt = [&](int latitude, double azimuth) {
        view.latitude = latitude;
        view.sunAzimuth = azimuth;
        return brightest(picture(view)).x();
    };
    EXPECT_LT(sunAt(45, 110), glass.width() / 3); // the morning, looking south
    EXPECT_NEAR(sunAt(45, 180), glass.width() / 2, 6);
    EXPECT_GT(sunAt(45, 250), glass.width() * 2 / 3);
    EXPECT_GT(sunAt(-35, 70), glass.width() * 2 / 3); // the morning, looking north
    EXPECT_LT(sunAt(-35, 290), glass.width() / 3);
    // High over the tropics it passes the middle on whichever side of the zenith.
    view.sunAltitude = 70;
    EXPECT_NEAR(sunAt(1, 0), glass.width() / 2, 6);
    EXPECT_NEAR(sunAt(1, 180), glass.width() / 2, 6);
}

TEST(WindowView, TheMoonIsLitOnItsBrightLimb) {
    auto view = night();
    view.moon = {.altitude = 45, .azimuth = 180, .lit = 0.5, .brightLimb = 0, .isWaxing = true};
    const auto lightAround = [&](double limb) {
        view.moon.brightLimb = limb;
        const auto image = picture(view);
        const QPoint middle{124, 126 - 79};
        const auto at = [&](int dx, int dy) {
            return brightness(image, {middle.x() + dx - 2, middle.y() + dy - 2, 5, 5});
        };
        return std::array{at(0, -5), at(5, 0), at(0, 5), at(-5, 0)}; // above, right, below, left
    };
    const std::array<double, 4> limbs{0, -90, 180, 90};
    for (std::size_t i = 0; i < limbs.size(); ++i) {
        const auto light = lightAround(limbs[i]);
        EXPECT_GT(light[i], light[(i + 2) % 4] + 60) << limbs[i];
    }
}

TEST(WindowView, LampsAreLitInTheEveningFewAtThreeAndNoneByDay) {
    auto view = night();
    const int evening = lamps(picture(view));
    view.hour = 3;
    const int late = lamps(picture(view));
    EXPECT_GT(evening, 150);
    EXPECT_LT(late * 4, evening);
    // While the sun is up the hour changes nothing.
    view.sunAltitude = 30;
    const auto atThree = picture(view);
    view.hour = 21;
    EXPECT_EQ(picture(view), atThree);
}

TEST(WindowView, APlaceLooksTheSameEveryDayAndUnlikeAnother) {
    const auto here = night();
    EXPECT_EQ(picture(here), picture(here));
    auto there = here;
    there.scenery.seed = 8;
    EXPECT_FALSE(picture(here) == picture(there));
}

TEST(WindowView, RainDriftsWithTheWindAcrossTheViewAndSnowFallsSlower) {
    auto rain = night();
    rain.sky = Sky::rain;
    rain.fall = 0.6;
    rain.windKmh = 20;
    rain.windFrom = 270;
    EXPECT_LT(fallingTile(rain).dx, -0.2); // west is to the right of whoever looks south
    rain.latitude = -35;
    EXPECT_GT(fallingTile(rain).dx, 0.2);
    rain.windFrom = 180;
    EXPECT_NEAR(fallingTile(rain).dx, 0, 0.01);
    auto snow = rain;
    snow.sky = Sky::snow;
    EXPECT_LT(fallingTile(snow).dy, fallingTile(rain).dy / 3);
    EXPECT_FALSE(falls(night()));
    auto moving = rain;
    moving.isStill = false;
    EXPECT_FALSE(picture(moving) == picture(rain));
}

TEST(WindowView, WhatFallsGoesOnOverTheEdgesOfItsTile) {
    auto rain = night();
    rain.sky = Sky::rain;
    rain.fall = 1;
    rain.windKmh = 30;
    const auto tile = paintedTile(rain, glass, 1);
    // A streak is as dense at an edge as it is anywhere: neighbours across it differ no more than within.
    const auto unlikeness = [&](int row) {
        double sum = 0;
        for (int x = 0; x < tile.width(); ++x) {
            sum += std::abs(qAlpha(tile.pixel(x, row)) - qAlpha(tile.pixel(x, (row + 1) % tile.height())));
        }
        return sum;
    };
    double within = 0;
    for (int row = 20; row < 60; ++row) within += unlikeness(row) / 40;
    EXPECT_LT(unlikeness(tile.height() - 1), 2 * within);
    EXPECT_GT(within, 0);
}

} // namespace
} // namespace lumaro
