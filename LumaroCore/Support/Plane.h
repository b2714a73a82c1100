// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Fields.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace lumaro {

/// A place or a displacement, in points; x grows to the right, y downwards.
struct Point {
    double x = 0;
    double y = 0;

    static constexpr auto fields() { return std::tuple{Field{"x", &Point::x}, Field{"y", &Point::y}}; }
    bool operator==(const Point&) const = default;

    constexpr Point operator+(Point other) const { return {x + other.x, y + other.y}; }
    constexpr Point operator-(Point other) const { return {x - other.x, y - other.y}; }
    constexpr Point operator*(double factor) const { return {x * factor, y * factor}; }
};

inline bool isFinite(Point p) {
    return std::isfinite(p.x) && std::isfinite(p.y);
}

inline double distance(Point a, Point b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// Width and height in points.
struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
    constexpr Size operator*(double factor) const { return {width * factor, height * factor}; }
};

/// A rectangle by its top-left corner and its size.
struct Rect {
    Point origin;
    Size size;

    static constexpr Rect centredOn(Point centre, Size size) {
        return {{centre.x - size.width / 2, centre.y - size.height / 2}, size};
    }
    constexpr Point centre() const { return {origin.x + size.width / 2, origin.y + size.height / 2}; }
    bool operator==(const Rect&) const = default;
};

/// The area that two rectangles share, in square points; 0 when they do not meet.
constexpr double sharedArea(const Rect& a, const Rect& b) {
    const double width =
        std::min(a.origin.x + a.size.width, b.origin.x + b.size.width) - std::max(a.origin.x, b.origin.x);
    const double height =
        std::min(a.origin.y + a.size.height, b.origin.y + b.size.height) - std::max(a.origin.y, b.origin.y);
    return width > 0 && height > 0 ? width * height : 0.0;
}

} // namespace lumaro
