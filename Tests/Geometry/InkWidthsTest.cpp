// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkWidths.h"

#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Geometry/Doodle.h"
#include "LumaroCore/Geometry/InkEraser.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkSmoothing.h"
#include "LumaroCore/Support/Wire.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace lumaro {
namespace {

constexpr double widthStep = (1 - thinInk) / 4;

/// A pen that goes to and fro in waves and becomes faster from stop to stop.
std::vector<PenSample> scribble(std::size_t count, std::optional<double> pressure = {}) {
    std::vector<PenSample> samples;
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) * 0.008;
        const double way = 500 * t + 260 * std::sin(2.4 * t) / 2.4;
        samples.push_back({{100 + std::fmod(way, 1400), 300 + 40 * std::sin(way / 25)}, t, pressure});
    }
    return samples;
}

TEST(InkWidths, AreToldByHundredthsThatOtherLinesDoNotHave) {
    for (const double width : {0.1, thinInk, 0.7, 0.9, 1.0, 1.1, thickInk, 4.0, std::nan("")}) {
        const Point point = inkPoint({12.36, 7.04}, width);
        EXPECT_LE(distance(point, {12.36, 7.04}), 0.12);
        const std::vector line{point, inkPoint({500, 8}, thickInk)};
        const double wanted = std::isnan(width) ? 1 : std::clamp(width, thinInk, thickInk);
        EXPECT_NEAR(inkWidths(line)[0], wanted, widthStep / 2 + 1e-9);
        EXPECT_EQ(inkWidths(line)[1], thickInk);
    }
    const std::vector<std::vector<Point>> equallyWide{{},
                                                      {{1, 2}, {30.1, 4.7}},           // tenths
                                                      {{1.02, 2.13}, {3.04, 4}},       // hundredths in y, too
                                                      {{1.023, 2}, {3.04, 4}},         // finer
                                                      {{1.05, 2}, {3.04, 4}},          // between two tenths
                                                      {{1.02, 2}, {std::nan(""), 4}}}; // no number
    for (const auto& line : equallyWide) {
        EXPECT_FALSE(isLiveInk(line));
        EXPECT_EQ(inkWidths(line), std::vector<double>(line.size(), 1));
    }
}

TEST(PenStroke, IsThickWhereThePenIsSlowOrPressedAndThinWhereItIsFast) {
    const auto widthsAt = [](double speed, std::optional<double> pressure) {
        std::vector<PenSample> raw;
        for (int i = 0; i < 60; ++i) raw.push_back({{i * speed / 125, 10}, i / 125.0, pressure});
        return inkWidths(penStroke(raw, "ink", 6).points);
    };
    EXPECT_GT(widthsAt(100, {}).front(), 1.2);
    EXPECT_LT(widthsAt(4000, {}).front(), 0.66);
    EXPECT_EQ(widthsAt(4000, 1.0).front(), thickInk);
    EXPECT_EQ(widthsAt(100, 0.0).front(), thinInk);
    // Without time it is a plain line, the same as ever.
    std::vector<Point> places;
    std::vector<PenSample> timeless;
    for (const auto& sample : scribble(400)) {
        places.push_back(sample.place);
        timeless.push_back({sample.place});
    }
    EXPECT_EQ(penStroke(timeless, "ink", 6), inkStroke(places, "ink", 6));
}

TEST(PenStroke, CostsLittleMoreThanAnEquallyWideLine) {
    const auto raw = scribble(2000);
    std::vector<Point> places;
    for (const auto& sample : raw) places.push_back(sample.place);
    const std::vector live{penStroke(raw, "ink", 6)};
    const std::vector plain{inkStroke(places, "ink", 6)};
    const auto bytes = [](const std::vector<InkStroke>& strokes) { return Wire::encode(strokes)->size(); };
    EXPECT_TRUE(isLiveInk(live[0].points));
    EXPECT_LT(bytes(live), bytes(plain) * 3 / 2) << bytes(live) << " for " << bytes(plain);
}

TEST(PenStroke, StaysAsWideAsItIsWhenItIsPutUpMovedThinnedAndRubbedOn) {
    const auto drawn = penStroke(scribble(700), "ink", 6);
    const auto placed = makeDoodle({drawn}, std::nullopt).value();
    const auto& stored = placed.payload.strokes[0];
    EXPECT_EQ(inkWidths(stored.points), inkWidths(drawn.points));
    BoardItem item;
    item.payload = placed.payload;
    EXPECT_EQ(Wire::decode<BoardItem>(Wire::encode(item).value()).value(), item);
    // On a tilted item that was scaled, at no round place.
    const auto elsewhere = canvasStrokes(placed.payload, {431.2837, 77.123}, 7.3, 1.37);
    EXPECT_EQ(inkWidths(elsewhere[0].points), inkWidths(drawn.points));
    const auto erased = eraseInk(elsewhere, {300, 0}, {300, 300}, 9);
    ASSERT_GT(erased.size(), elsewhere.size());
    for (const auto& piece : erased) EXPECT_TRUE(isLiveInk(piece.points));
    // Far fewer points, hardly another line.
    const auto thinned = simplified(drawn.points, 0.5);
    EXPECT_LT(thinned.size(), drawn.points.size() * 3 / 4);
    EXPECT_TRUE(isLiveInk(thinned));
    // Somebody who rounds to tenths gets the line as wide as its stroke.
    auto rounded = stored.points;
    for (auto& point : rounded) point = roundedInk(point);
    EXPECT_FALSE(isLiveInk(rounded));
}

TEST(PenStroke, IsFoundAndBoxedAsWideAsItIs) {
    const InkStroke thick{"ink", 20, {inkPoint({100, 100}, thickInk), inkPoint({200, 100}, thickInk)}};
    EXPECT_TRUE(inkHit(thick, {150, 113}, 0));
    EXPECT_FALSE(inkHit(thick, {150, 114}, 0));
    EXPECT_NEAR(makeDoodle({thick}, std::nullopt)->payload.height, 20 * thickInk, 0.2);
}

} // namespace
} // namespace lumaro
