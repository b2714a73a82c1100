// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Plane.h"

#include <algorithm>
#include <cmath>

namespace lumaro {

/// The thinnest line there is, in points. It stands in for widths that are smaller or not a number.
inline constexpr double minInkWidth = 0.5;

/// No pointer is this many points away from the canvas: places beyond are faults of a device or a peer. It also keeps
/// the squares and sums of this folder far from overflow.
inline constexpr double inkReach = 100000;

/// Coordinates on the wire are whole multiples of 1 / `inkSteps` points.
inline constexpr double inkSteps = 10;

/// Whether a line can go through this point: it is finite and within `inkReach`.
inline bool isInkPoint(Point p) {
    return std::abs(p.x) <= inkReach && std::abs(p.y) <= inkReach; // false for a NaN
}

inline double usableInkWidth(double width) {
    return std::isfinite(width) && width > minInkWidth ? width : minInkWidth;
}

/// The nearest point that is short on the wire.
inline Point roundedInk(Point p) {
    // Adding zero turns a negative zero into zero.
    return {std::round(p.x * inkSteps) / inkSteps + 0.0, std::round(p.y * inkSteps) / inkSteps + 0.0};
}

constexpr double dot(Point a, Point b) {
    return a.x * b.x + a.y * b.y;
}

constexpr double cross(Point a, Point b) {
    return a.x * b.y - a.y * b.x;
}

/// The point a part `t` of the way from `a` to `b`.
constexpr Point between(Point a, Point b, double t) {
    return a + (b - a) * t;
}

/// How far `p` is from the nearest point of the segment from `a` to `b`, which may be a single point.
inline double segmentDistance(Point p, Point a, Point b) {
    const Point along = b - a;
    const double lengthSquared = dot(along, along);
    const double t = lengthSquared > 0 ? std::clamp(dot(p - a, along) / lengthSquared, 0.0, 1.0) : 0.0;
    return distance(p, between(a, b, t));
}

} // namespace lumaro
