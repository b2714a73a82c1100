// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"

#include <compare>
#include <string>
#include <string_view>

namespace lumaro {

/// A place on earth to two decimals of a degree, about a kilometre: all that a source of the weather learns.
struct CoarsePosition {
    int latitude = 0;  ///< hundredths of a degree
    int longitude = 0; ///< likewise

    /// Rounds half away from zero. The point is on earth.
    static CoarsePosition of(Coordinates point);

    Coordinates degrees() const { return {latitude / 100.0, longitude / 100.0}; }
    auto operator<=>(const CoarsePosition&) const = default;
};

/// "LATITUDE=52.52&LONGITUDE=13.4": a query with the two keys, and the degrees in their shortest form.
std::string queryOf(CoarsePosition position, std::string_view latitudeKey, std::string_view longitudeKey);

} // namespace lumaro
