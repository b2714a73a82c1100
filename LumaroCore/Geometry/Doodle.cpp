// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/Doodle.h"

#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkSmoothing.h"
#include "LumaroCore/Geometry/InkWidths.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace lumaro {
namespace {

constexpr std::array<double, 7> tolerances{0.25, 0.35, 0.5, 0.7, 1.0, 1.4, maxDoodleTolerance};

// What rounding may add to a sum of a few coordinates; far below what is seen.
constexpr double slack = 1e-6;

struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void include(double place, double margin) {
        low = std::min(low, place - margin);
        high = std::max(high, place + margin);
    }
};

struct Side {
    double origin = 0;
    double length = 0;
};

// The side of the box begins at a multiple of 0.1, as the coordinates do. A doodle that is rubbed on and made anew then
// does not drift.
std::optional<Side> sideAround(Extent extent) {
    const bool isNear = extent.low >= -inkReach && extent.high <= inkReach;
    if (!isNear || extent.high - extent.low > BoardSpec::maxDoodleSide + slack) return std::nullopt;
    const double first = std::floor(extent.low * inkSteps + slack);
    const double steps = std::ceil(extent.high * inkSteps - slack) - first;
    const double missing = std::max(0.0, minDoodleSide * inkSteps - steps);
    return Side{(first - std::floor(missing / 2)) / inkSteps,
                std::min((steps + missing) / inkSteps, BoardSpec::maxDoodleSide)};
}

std::optional<Rect> boxAround(const std::vector<InkStroke>& strokes) {
    Extent across;
    Extent down;
    for (const auto& stroke : strokes) {
        const auto widths = inkWidths(stroke.points);
        for (std::size_t i = 0; i < stroke.points.size(); ++i) {
            across.include(stroke.points[i].x, stroke.width / 2 * widths[i]);
            down.include(stroke.points[i].y, stroke.width / 2 * widths[i]);
        }
    }
    const auto horizontal = sideAround(across);
    const auto vertical = sideAround(down);
    if (!horizontal || !vertical) return std::nullopt;
    return Rect{{horizontal->origin, vertical->origin}, {horizontal->length, vertical->length}};
}

// Rounds before there is a box, which then holds what is stored, and moves the points by whole steps.
void keepUsable(std::vector<InkStroke>& strokes) {
    for (auto& stroke : strokes) {
        stroke.width = usableInkWidth(stroke.width);
        std::erase_if(stroke.points, [](Point p) { return !isFinite(p); });
        roundInk(stroke.points);
    }
    std::erase_if(strokes, [](const InkStroke& stroke) { return stroke.points.empty(); });
}

void moveIntoBox(std::vector<InkStroke>& strokes, Point corner) {
    for (auto& [ink, width, points] : strokes) {
        moveInk(points, [corner](Point point) { return roundedInk(point - corner); });
        if (points.size() > BoardSpec::maxPointsPerStroke) {
            points = simplifiedToFit(points, tolerances.front(), BoardSpec::maxPointsPerStroke);
        }
    }
}

bool fitsBudget(const std::vector<InkStroke>& strokes) {
    const auto json = Wire::encode(strokes);
    return json && json->size() <= BoardSpec::doodleBudgetBytes;
}

// The strokes with the smallest of the tolerances that brings them within the budget.
std::optional<std::vector<InkStroke>> withinBudget(std::vector<InkStroke> strokes) {
    if (fitsBudget(strokes)) return strokes;
    auto thinned = strokes;
    for (const double tolerance : tolerances) {
        for (std::size_t i = 0; i < strokes.size(); ++i) {
            thinned[i].points = simplified(strokes[i].points, tolerance);
        }
        if (fitsBudget(thinned)) return thinned;
    }
    return std::nullopt;
}

} // namespace

std::expected<PlacedDoodle, DoodleFault> makeDoodle(std::vector<InkStroke> drawn, std::optional<UUID> on) {
    keepUsable(drawn);
    if (drawn.empty()) return std::unexpected(DoodleFault::empty);
    if (drawn.size() > BoardSpec::maxStrokesPerDoodle) return std::unexpected(DoodleFault::tooManyStrokes);
    const auto box = boxAround(drawn);
    if (!box) return std::unexpected(DoodleFault::tooLarge);
    moveIntoBox(drawn, box->origin);
    auto strokes = withinBudget(std::move(drawn));
    if (!strokes) return std::unexpected(DoodleFault::tooMuchInk);
    return PlacedDoodle{box->centre(), {box->size.width, box->size.height, std::move(*strokes), on}};
}

std::vector<InkStroke> canvasStrokes(const DoodlePayload& doodle, Point center, double rotationDegrees, double scale) {
    if (!isFinite(center) || !std::isfinite(rotationDegrees) || !std::isfinite(scale) || scale <= 0) return {};
    const double angle = rotationDegrees * std::numbers::pi / 180;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const Point middle{doodle.width / 2, doodle.height / 2};
    std::vector<InkStroke> strokes = doodle.strokes;
    for (auto& stroke : strokes) {
        stroke.width *= scale;
        moveInk(stroke.points, [&](Point point) {
            const Point arm = (point - middle) * scale;
            return center + Point{arm.x * cosine - arm.y * sine, arm.x * sine + arm.y * cosine};
        });
    }
    return strokes;
}

} // namespace lumaro
