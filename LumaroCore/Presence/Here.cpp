// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Here.h"

#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Unicode.h"

namespace lumaro {

std::string Here::clampLabel(std::string_view text) {
    const auto start = firstCharacters(trimmed(text), maxLabelCharacters);
    return start.empty() ? "somewhere" : std::string{start};
}

Here Here::coarsened(HerePrecision to) const {
    auto coarse = *this;
    const auto at = mutant(Mutant::finePositionsTravel) ? Coordinates{lat, lon} : rounded({lat, lon}, decimalsOf(to));
    coarse.lat = at.latitude;
    coarse.lon = at.longitude;
    coarse.precision = to;
    coarse.label = clampLabel(label);
    if (city) coarse.city = clampLabel(*city);
    return coarse;
}

bool Here::isSameSpot(const Here& as) const {
    return lat == as.lat && lon == as.lon && label == as.label && city == as.city && precision == as.precision &&
           since == as.since;
}

} // namespace lumaro
