// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/Sky.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <cstdint>
#include <optional>
#include <tuple>

namespace lumaro {

/// The weather at a rounded position. Temperatures in degrees Celsius, covers in percent.
struct Weather {
    double tempC = 0;
    std::optional<double> feelsC;
    std::int64_t code = 0; ///< WMO weather interpretation code
    bool isDay = true;
    std::optional<double> hiC;
    std::optional<double> loC;
    std::optional<double> cloudLow;
    std::optional<double> cloudMid;
    std::optional<double> cloudHigh;
    std::optional<double> visibilityM;
    std::optional<double> windDeg;
    std::optional<double> windKmh;
    Instant sampledAt; ///< when the forecast was read

    Sky sky() const { return skyOf(code, isDay); }

    static constexpr auto fields() {
        return std::tuple{Field{"tempC", &Weather::tempC},
                          Field{"feelsC", &Weather::feelsC},
                          Field{"code", &Weather::code},
                          Field{"isDay", &Weather::isDay},
                          Field{"hiC", &Weather::hiC},
                          Field{"loC", &Weather::loC},
                          Field{"cloudLow", &Weather::cloudLow},
                          Field{"cloudMid", &Weather::cloudMid},
                          Field{"cloudHigh", &Weather::cloudHigh},
                          Field{"visibilityM", &Weather::visibilityM},
                          Field{"windDeg", &Weather::windDeg},
                          Field{"windKmh", &Weather::windKmh},
                          Field{"sampledAt", &Weather::sampledAt}};
    }
    bool operator==(const Weather&) const = default;
};

} // namespace lumaro
