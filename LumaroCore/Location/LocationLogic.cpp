// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Location/LocationLogic.h"

#include "LumaroCore/Support/Unicode.h"

#include <utility>

namespace lumaro::LocationLogic {

bool hasMoved(Coordinates from, Coordinates to) {
    constexpr double stay = 150;
    return metresBetween(from, to) > stay;
}

std::string label(const PlaceFacts& facts, const PlaceBook& book, double lat, double lon) {
    if (auto own = book.name(lat, lon)) return std::move(*own);
    const auto& known = facts.locality ? facts.locality : facts.subLocality;
    return Here::clampLabel(known ? lowered(*known) : "");
}

Here here(const LocationAnchor& anchor, const PlaceFacts& facts, const PlaceBook& book, HerePrecision precision,
          Instant sampledAt, std::string zone) {
    const auto [lat, lon] = anchor.position;
    return Here{.lat = lat,
                .lon = lon,
                .label = label(facts, book, lat, lon),
                .city = facts.locality,
                .tz = std::move(zone),
                .precision = precision,
                .since = anchor.since,
                .sampledAt = sampledAt,
                .weather = std::nullopt}
        .coarsened(precision);
}

} // namespace lumaro::LocationLogic
