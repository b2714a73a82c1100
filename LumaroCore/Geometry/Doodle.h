// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/Plane.h"
#include "LumaroCore/Support/UUID.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace lumaro {

/// A doodle's sides are no shorter, in points, so that a dot can be touched.
inline constexpr double minDoodleSide = 24;

/// The most a line is moved to bring a doodle under its bytes, in points; about half a pen's width, where letters can
/// still be read.
inline constexpr double maxDoodleTolerance = 2;

struct PlacedDoodle {
    Point center; ///< on the canvas
    DoodlePayload payload;

    bool operator==(const PlacedDoodle&) const = default;
};

enum class DoodleFault : std::uint8_t {
    empty,          ///< no stroke has a finite point
    tooManyStrokes, ///< more than `BoardSpec::maxStrokesPerDoodle`
    tooLarge,       ///< a side over `BoardSpec::maxDoodleSide`, or a place beyond `inkReach`
    tooMuchInk,     ///< no JSON text within `BoardSpec::doodleBudgetBytes`, however simplified
};

/// The doodle that shows these strokes where they lie, within every cap. Its box holds the lines with their widths; its
/// coordinates are rounded to 0.1. Only strokes over a cap are simplified, and all of them when together they are over
/// the bytes. Points that are not finite are left out, and so are strokes without others.
[[nodiscard]] std::expected<PlacedDoodle, DoodleFault> makeDoodle(std::vector<InkStroke> drawn, std::optional<UUID> on);

/// Where the strokes of a doodle lie on the canvas when its centre is at `center`, scaled and then turned clockwise
/// about it. The way back from `makeDoodle` when it is neither. None when the place is not finite or the scale not
/// positive.
std::vector<InkStroke> canvasStrokes(const DoodlePayload& doodle, Point center, double rotationDegrees, double scale);

} // namespace lumaro
