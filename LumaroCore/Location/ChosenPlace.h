// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Fields.h"

#include <string>
#include <tuple>

namespace lumaro {

/// A town that a person says they are in.
struct ChosenPlace {
    std::string name;
    std::string country; ///< ISO 3166-1, two letters
    std::string zone;    ///< IANA name
    double lat = 0;
    double lon = 0;

    Coordinates position() const { return {lat, lon}; }

    static constexpr auto fields() {
        return std::tuple{Field{"name", &ChosenPlace::name}, Field{"country", &ChosenPlace::country},
                          Field{"zone", &ChosenPlace::zone}, Field{"lat", &ChosenPlace::lat},
                          Field{"lon", &ChosenPlace::lon}};
    }
    bool operator==(const ChosenPlace&) const = default;
};

} // namespace lumaro
