// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/Grip.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumaro {
namespace {

constexpr double nearestPointer = 1; // a pointer in the very middle has no direction

double degrees(Point away) {
    return std::atan2(away.y, away.x) * 180 / std::numbers::pi;
}

} // namespace

double Grip::tiltAt(Point pointer) const {
    return std::remainder(tilt_ + degrees(pointer - center_) - degrees(at_ - center_), 360);
}

double Grip::scaleAt(Point pointer) const {
    return scale_ * distance(pointer, center_) / std::max(nearestPointer, distance(at_, center_));
}

} // namespace lumaro
