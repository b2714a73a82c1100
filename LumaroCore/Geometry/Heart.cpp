// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/Heart.h"

#include "LumaroCore/Geometry/InkWidths.h"
#include "LumaroCore/Geometry/ItemAt.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace lumaro {
namespace {

constexpr std::string_view heartInk = "coral";
constexpr double heartWidth = 4.5; // of its line, in points
constexpr double heartSide = 34;   // about
constexpr double inset = 30;       // of its middle from the edges of the paper

// The fractions that an id gives, one after the other.
class Chances {
public:
    explicit Chances(const UUID& id) {
        const auto& bytes = id.bytes;
        std::seed_seq seed(bytes.begin(), bytes.end());
        random_.seed(seed);
    }

    double within(double reach) {
        return (static_cast<double>(random_()) / static_cast<double>(std::mt19937::max()) * 2 - 1) * reach;
    }

private:
    std::mt19937 random_;
};

Point turned(Point arm, double angle) {
    return {arm.x * std::cos(angle) - arm.y * std::sin(angle), arm.x * std::sin(angle) + arm.y * std::cos(angle)};
}

// One half of a heart about {0, 0}, from the dip between its lobes down to the tip, 32 units wide with the other one.
Point onHeart(double t, double side) {
    return {side * 16 * std::pow(std::sin(t), 3),
            -(13 * std::cos(t) - 5 * std::cos(2 * t) - 2 * std::cos(3 * t) - std::cos(4 * t)) - 2.5};
}

// The pen lingers in the lobes and leaves quickly at the tip.
double widthAt(double part) {
    return 0.8 + 0.5 * std::sin(std::numbers::pi * std::min(1.0, 1.25 * part)) - 0.25 * part;
}

InkStroke half(Point middle, double side, double angle, Chances& chances) {
    const double scale = heartSide / 32 * (1 + chances.within(0.07));
    const double wobble = chances.within(std::numbers::pi);
    // It begins a little before the dip and goes a little past the tip.
    const double from = 0.12 + chances.within(0.1);
    const double to = std::numbers::pi + 0.07 + chances.within(0.05);
    constexpr int steps = 18;
    InkStroke stroke{std::string{heartInk}, heartWidth, {}};
    for (int i = 0; i <= steps; ++i) {
        const double part = static_cast<double>(i) / steps;
        const Point place =
            onHeart(std::lerp(from, to, part), side) * (scale * (1 + 0.03 * std::sin(5 * part + wobble)));
        stroke.points.push_back(inkPoint(middle + turned(place, angle), widthAt(part)));
    }
    return stroke;
}

std::expected<PlacedDoodle, DoodleFault> heartAt(Point middle, Chances& chances, std::optional<UUID> on) {
    const double angle = chances.within(0.22);
    auto left = half(middle, -1, angle, chances);
    auto right = half(middle, 1, angle, chances);
    return makeDoodle({std::move(left), std::move(right)}, on);
}

bool isDoodleNear(const Board& board, const UUID& surface, Point place) {
    return std::ranges::any_of(board.items, [&](const BoardItem& item) {
        const auto* const doodle = item.payload.as<DoodlePayload>();
        return doodle != nullptr && doodle->on == surface &&
               sharedArea(boundsOf(item), Rect::centredOn(place, {heartSide, heartSide})) > 0;
    });
}

// On the paper: below on the right, where notes seldom reach, and from there around it.
Point freeCorner(const Board& board, const BoardItem& item) {
    const Size size = item.naturalSize() * item.scale;
    const double across = std::max(0.0, size.width / 2 - inset);
    const double down = std::max(0.0, size.height / 2 - inset);
    const std::array<Point, 4> corners{{{across, down}, {across, -down}, {-across, down}, {-across, -down}}};
    const double angle = item.rotationDegrees * std::numbers::pi / 180;
    for (const auto corner : corners) {
        const Point place = item.center + turned(corner, angle);
        if (!isDoodleNear(board, item.id, place)) return place;
    }
    return item.center + turned(corners.front(), angle);
}

Point besideDoodle(const BoardItem& item) {
    const auto [corner, size] = boundsOf(item);
    const double right = corner.x + size.width + inset;
    const double x = right <= BoardSpec::canvasSize.width ? right : corner.x - inset;
    return {std::clamp(x, 0.0, BoardSpec::canvasSize.width),
            std::clamp(corner.y + inset / 2, 0.0, BoardSpec::canvasSize.height)};
}

} // namespace

std::expected<PlacedDoodle, DoodleFault> heartFor(const Board& board, const BoardItem& item, const UUID& id) {
    Chances chances{id};
    const bool isDoodle = item.kind() == ItemKind::doodle;
    const Point aside{chances.within(6), chances.within(6)};
    const Point place = (isDoodle ? besideDoodle(item) : freeCorner(board, item)) + aside;
    return heartAt(place, chances, isDoodle ? std::nullopt : std::optional{item.id});
}

} // namespace lumaro
