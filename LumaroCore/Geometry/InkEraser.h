// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"
#include "LumaroCore/Support/Plane.h"

#include <span>
#include <vector>

namespace lumaro {

/// Whether `point` lies within `radius` of the line as it is drawn, so with half the stroke's width on either side.
/// Points that are not finite, or beyond `inkReach`, break the line. A radius that is negative or not a number hits
/// nothing.
bool inkHit(const InkStroke& stroke, Point point, double radius);

/// What is left after a round tip went straight from `from` to `to`, or dabbed once when they are equal; lengths in
/// points. The tip takes the middle of a line, `radius` wide and no wider: counting the line's width too would cut
/// through wide lines that the tip only brushes.
///
/// Strokes that are not touched are left bit for bit, in their order. A touched one gives way to its pieces, cut where
/// the edge of the swept area crosses it. Pieces shorter than half the stroke's width are crumbs and go; a dot goes
/// when its middle is under the tip. Points that `inkHit` leaves out end a piece. Nothing is erased when the radius is
/// not positive, or an end of the way is not finite or beyond `inkReach`.
std::vector<InkStroke> eraseInk(std::span<const InkStroke> strokes, Point from, Point to, double radius);

} // namespace lumaro
