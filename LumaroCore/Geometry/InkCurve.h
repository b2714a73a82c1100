// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Support/Plane.h"

#include <cmath>

namespace lumaro {

/// A curve from one point to the next through all points of a line, by Catmull and Rom with centripetal knots (Yuksel,
/// Schaefer and Keyser 2011), which makes no loops where points lie close to one another. `before` and `after` are the
/// neighbours; at an end of the line the end itself.
class InkCurve {
public:
    InkCurve(Point before, Point begin, Point end, Point after)
        : begin_(begin), end_(end), leaves_(tangent(before, begin, end, knot(begin, end))),
          comes_(tangent(begin, end, after, knot(begin, end))) {}

    /// From 0 at its beginning to 1 at its end.
    Point at(double t) const {
        const double rest = 1 - t;
        return begin_ * ((1 + 2 * t) * rest * rest) + end_ * (t * t * (3 - 2 * t)) + leaves_ * (t * rest * rest) -
               comes_ * (t * t * rest);
    }
    double chord() const { return distance(begin_, end_); }
    /// By how much its direction changes, in radians.
    double turn() const {
        const Point straight = end_ - begin_;
        return turnBetween(leaves_, straight) + turnBetween(straight, comes_);
    }
    static double turnBetween(Point a, Point b) { return std::abs(std::atan2(cross(a, b), dot(a, b))); }

private:
    static double knot(Point a, Point b) { return std::sqrt(distance(a, b)); }

    // At the middle one of three, over a span of the knots.
    static Point tangent(Point a, Point b, Point c, double span) {
        const double first = knot(a, b);
        const double second = knot(b, c);
        if (first <= 0 || second <= 0) return (c - a) * (first + second > 0 ? span / (first + second) : 0);
        return ((b - a) * (1 / first) - (c - a) * (1 / (first + second)) + (c - b) * (1 / second)) * span;
    }

    Point begin_;
    Point end_;
    Point leaves_;
    Point comes_;
};

} // namespace lumaro
