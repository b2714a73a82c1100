// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Here.h"

#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Unicode.h"

namespace lumaro {

std::string Here::clampLabel(std::string_view text) {
    auto start = firstCharacters(trimmed(text), maxLabelCharacters);
    // With marks one character may be as long as a book.
    if (start.size() > maxLabelBytes) {
        auto end = maxLabelBytes;
        while (end > 0 && (static_cast<unsigned char>(start[end]) & 0xC0U) == 0x80U) --end;
        start = start.substr(0, end);
    }
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
