// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/Coordinates.h"

#include <cmath>
#include <numbers>

namespace lumaro {
namespace {

double squared(double value) {
    return value * value;
}

double roundedTo(double value, double steps) {
    return std::round(value * steps) / steps + 0.0; // -0.0 + 0.0 is 0.0
}

} // namespace

bool isOnEarth(Coordinates point) {
    return std::abs(point.latitude) <= 90 && std::abs(point.longitude) <= 180;
}

double metresBetween(Coordinates from, Coordinates to) {
    constexpr double earthDiameter = 12'742'000;
    constexpr double radian = std::numbers::pi / 180;
    const double haversine = squared(std::sin((to.latitude - from.latitude) * radian / 2)) +
                             std::cos(from.latitude * radian) * std::cos(to.latitude * radian) *
                                 squared(std::sin((to.longitude - from.longitude) * radian / 2));
    // Of two antipodes it may come out a little above 1.
    return earthDiameter * std::atan2(std::sqrt(haversine), std::sqrt(std::fmax(0, 1 - haversine)));
}

Coordinates rounded(Coordinates point, int decimals) {
    const double steps = std::pow(10, decimals);
    return {roundedTo(point.latitude, steps), roundedTo(point.longitude, steps)};
}

} // namespace lumaro
