// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace lumaro {

/// A point on the earth in degrees: north and east count up from 0, south and west down.
struct Coordinates {
    double latitude = 0;  ///< -90 to 90
    double longitude = 0; ///< -180 to 180

    bool operator==(const Coordinates&) const = default;
};

/// Whether both are numbers within their limits.
bool isOnEarth(Coordinates point);

/// The length of the great circle between two points, by the haversine formula on a sphere of 12,742,000 m across.
double metresBetween(Coordinates from, Coordinates to);

/// Rounded to so many decimals, half away from zero; never "-0".
Coordinates rounded(Coordinates point, int decimals);

} // namespace lumaro
