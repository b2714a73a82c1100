// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Plane.h"

namespace lumaro {

/// Where an item lies, or several together.
struct HeldPlace {
    Point center;
    double tilt = 0;
    double scale = 1;
};

/// A pointer that has taken hold of what is selected, and what its way means. Places are on the canvas. A value.
class Grip {
public:
    Grip(HeldPlace held, Point at) : at_(at), center_(held.center), tilt_(held.tilt), scale_(held.scale) {}

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
