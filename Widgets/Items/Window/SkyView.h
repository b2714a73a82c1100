// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Places/Scenery.h"
#include "LumaroCore/Presence/Sky.h"

namespace lumaro {

/// What is seen out of a window, as a value: equal views make equal pictures. Angles are degrees, parts are 0 to 1.
struct SkyView {
    /// The moon as it is seen.
    struct Moon {
        double altitude = -90;
        double azimuth = 0;
        double lit = 0;        ///< the part of its disc
        double brightLimb = 0; ///< from its top, counterclockwise
        bool isWaxing = false;

        bool operator==(const Moon&) const = default;
    };

    /// The parts of the sky that clouds cover, by their height.
    struct Clouds {
        double low = 0;
        double middle = 0;
        double high = 0;

        bool operator==(const Clouds&) const = default;
    };

    Sky sky = Sky::clear;
    double sunAltitude = 40;
    double sunAzimuth = 180;
    Moon moon;
    Clouds clouds;
    double fall = 0; ///< how hard it rains or snows
    double windKmh = 0;
    double windFrom = 0; ///< from north by east
    double mist = 0;     ///< 1 where nothing is seen but the next roofs
    double snowOnRoofs = 0;
    double hour = 12;  ///< local, 0 to 24: when people are up, and how far the clouds have drifted
    int latitude = 45; ///< whole degrees: which way the window looks, and how people build there
    Scenery scenery;
    bool isStill = true; ///< rain, snow and lightning are painted; else they move over the picture

    /// Windows look towards the equator, where the sun goes by.
    bool looksSouth() const { return latitude >= 0; }

    bool operator==(const SkyView&) const = default;
};

} // namespace lumaro
