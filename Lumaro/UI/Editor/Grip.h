// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/BoardItem.h"
#include "LumaroCore/Support/Plane.h"

namespace lumaro {

/// A pointer that has taken hold of an item, and what its way means. Places are on the canvas. A value.
class Grip {
public:
    Grip(const BoardItem& item, Point at)
        : at_(at), center_(item.center), tilt_(item.rotationDegrees), scale_(item.scale) {}

    Point centerAt(Point pointer) const { return center_ + (pointer - at_); }
    /// As if the item were turned about its middle.
    double tiltAt(Point pointer) const;
    /// As if a corner were pulled away from the middle.
    double scaleAt(Point pointer) const;

private:
    Point at_;
    Point center_;
    double tilt_;
    double scale_;
};

} // namespace lumaro
