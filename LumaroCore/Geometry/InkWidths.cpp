// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/InkWidths.h"

#include "LumaroCore/Geometry/InkLine.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace lumaro {
namespace {

// Steps from the stroke's own width to the thinnest and to the thickest.
constexpr int widthSteps = 4;
// What sums of coordinates may add to a hundredth.
constexpr double fuzz = 1e-4;

bool isWhole(double value) {
    return std::abs(value - std::round(value)) < fuzz;
}

// By how many hundredths the point is off its tenth; none when it is no point of a live line.
std::optional<int> hundredths(Point p) {
    if (!isInkPoint(p) || !isWhole(p.y * inkSteps) || !isWhole(p.x * inkSteps * 10)) return std::nullopt;
    const double off = std::round(p.x * inkSteps * 10) - 10 * std::round(p.x * inkSteps);
    if (std::abs(off) > widthSteps) return std::nullopt;
    return static_cast<int>(off);
}

double widthOf(int steps) {
    const double part = static_cast<double>(steps) / widthSteps;
    return steps < 0 ? 1 + part * (1 - thinInk) : 1 + part * (thickInk - 1);
}

int stepsOf(double width) {
    const double part = width < 1 ? (width - 1) / (1 - thinInk) : (width - 1) / (thickInk - 1);
    return std::isfinite(part) ? static_cast<int>(std::lround(std::clamp(part, -1.0, 1.0) * widthSteps)) : 0;
}

} // namespace

bool isLiveInk(std::span<const Point> points) {
    bool tells = false;
    for (const auto& point : points) {
        const auto steps = hundredths(point);
        if (!steps) return false;
        tells = tells || *steps != 0;
    }
    return tells;
}

std::vector<double> inkWidths(std::span<const Point> points) {
    std::vector<double> widths(points.size(), 1);
    if (!isLiveInk(points)) return widths;
    std::ranges::transform(points, widths.begin(), [](Point p) { return widthOf(hundredths(p).value_or(0)); });
    return widths;
}

Point inkPoint(Point place, double width) {
    const Point tenths = roundedInk(place);
    // One division, so that the number is the shortest.
    return {(std::round(tenths.x * inkSteps) * 10 + stepsOf(width)) / (inkSteps * 10) + 0.0, tenths.y};
}

void roundInk(std::vector<Point>& points) {
    if (isLiveInk(points)) {
        moveInk(points, [](Point p) { return p; });
    } else {
        std::ranges::transform(points, points.begin(), roundedInk);
    }
    const auto repeats = std::ranges::unique(points);
    points.erase(repeats.begin(), repeats.end());
}

} // namespace lumaro
