// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/Plane.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumaro {

/// The points of a line that is nowhere farther than `tolerance` points from the given one, by the method of Douglas
/// and Peucker (1973); the first and the last point stay, and a live line stays about as wide as it was. The points are
/// finite. Takes O(n log n) for every input.
std::vector<Point> simplified(std::span<const Point> points, double tolerance);

/// `simplified` with the tolerance doubled until at most `maxPoints`, two or more, are left.
std::vector<Point> simplifiedToFit(std::span<const Point> points, double tolerance, std::size_t maxPoints);

/// The stroke that a pen drew through `raw`, in points of the canvas: free of jitter, with coordinates rounded to 0.1
/// and at most `BoardSpec::maxPointsPerStroke` points. It begins and ends where the pen went down and up.
///
/// Points that are not finite, or more than `inkReach` away, are left out; without any other the stroke has no points.
/// A pen that stayed in one place gives one point. A width below `minInkWidth`, or not finite, becomes that.
InkStroke inkStroke(std::span<const Point> raw, std::string ink, double width);

/// Where a pen was, when, and how hard it was pressed, from 0 to 1, if it tells.
struct PenSample {
    Point place;
    double seconds = 0; ///< from any beginning
    std::optional<double> pressure{};
};

/// The same as a live line: thick where the pen was slow or pressed hard, thin where it was fast or light. As wide as
/// its stroke where neither is known.
InkStroke penStroke(std::span<const PenSample> raw, std::string ink, double width);

} // namespace lumaro
