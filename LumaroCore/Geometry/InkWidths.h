// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/Plane.h"

#include <span>
#include <vector>

// How wide a line is along itself. A stroke has one width, and points that are written in tenths; a live line tells at
// each of its points how wide it is there by the hundredths by which the point's x is off its tenth, from -4 to 4.
// Lines of scripts, of versions that round to tenths, and lines with finer or coarser numbers in y are as wide as their
// stroke. Whoever does not know of it sees each point at most 0.04 points aside.
namespace lumaro {

/// The narrowest and the widest that a line is, as parts of its stroke's width.
inline constexpr double thinInk = 0.54;
inline constexpr double thickInk = 1.32;

/// Whether these are the points of a live line.
bool isLiveInk(std::span<const Point> points);
/// How wide the line is at each of its points, as a part of its stroke's width; 1 everywhere unless it is live.
std::vector<double> inkWidths(std::span<const Point> points);
/// The nearest point that is short on the wire and tells this width.
Point inkPoint(Point place, double width);
/// Makes points short on the wire, and drops those that repeat the one before. Widths stay.
void roundInk(std::vector<Point>& points);
/// The same line elsewhere, rounded; `move` has the new place of each point.
template <class Move>
void moveInk(std::vector<Point>& points, Move move) {
    const bool isLive = isLiveInk(points);
    const auto widths = isLive ? inkWidths(points) : std::vector<double>{};
    for (std::size_t i = 0; i < points.size(); ++i) {
        points[i] = move(points[i]);
        if (isLive) points[i] = inkPoint(points[i], widths[i]);
    }
}

} // namespace lumaro
