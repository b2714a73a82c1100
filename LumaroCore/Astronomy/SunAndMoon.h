// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Instant.h"

namespace lumaro {

// Where the sun and the moon stand, after Jean Meeus, "Astronomical Algorithms", second edition, whose chapters the
// functions name. All angles are degrees. The sun is right to 0.02 degrees and the moon to 0.05 from 1900 to 2100: UTC
// is taken for dynamical time, which moves the moon by 0.01. Instants before -1000 and after 5000 count as those years,
// so that every instant has finite answers.

/// A place among the stars, as seen from the middle of the earth.
struct Equatorial {
    double rightAscension = 0; ///< 0 to 360
    double declination = 0;    ///< -90 to 90
};

/// A place over the horizon.
struct Horizontal {
    double altitude = 0; ///< -90 to 90
    double azimuth = 0;  ///< 0 to 360, from north by east
};

/// The moon as somebody sees it.
struct MoonSeen {
    Horizontal place;
    double illuminated = 0; ///< the part of its disc that is lit, 0 to 1
    bool isWaxing = false;
    /// Where the middle of the bright limb is on the disc: from its top, counterclockwise, -180 to 180. Top is towards
    /// the zenith, so it is right for every place: the southern hemisphere sees the moon on its head.
    double brightLimb = 0;
};

Equatorial sunAmongStars(Instant instant);  ///< chapters 22 and 25
Equatorial moonAmongStars(Instant instant); ///< chapter 47, its largest terms

/// Without refraction and parallax; chapters 12 and 13.
Horizontal overHorizon(Equatorial place, Coordinates point, Instant instant);
/// The altitude at which a body is seen whose true altitude this is, for common air: chapter 16. Under -4 degrees the
/// same.
double refracted(double altitude);

/// As seen through the air. The sun rises and sets when its middle is 0.27 degrees under the horizon.
Horizontal sunSeenFrom(Coordinates point, Instant instant);
/// As seen through the air, lower by its parallax (chapter 40); phase and limb by chapters 14 and 48.
MoonSeen moonSeenFrom(Coordinates point, Instant instant);

} // namespace lumaro
