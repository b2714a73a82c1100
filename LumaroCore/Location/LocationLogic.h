// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/PlaceBook.h"
#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Presence/Here.h"
#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Instant.h"

#include <string>

namespace lumaro {

/// A stay: where it began, and when. The fine position stays in this computer's memory.
struct LocationAnchor {
    Coordinates position;
    Instant since;
};

/// The rules of what is told of a position.
namespace LocationLogic {

/// Farther than 150 m.
bool hasMoved(Coordinates from, Coordinates to);

/// The place's name: the person's own as they wrote it, else the town's, else that of its part, in lower case; else
/// "somewhere".
std::string label(const PlaceFacts& facts, const PlaceBook& book, double lat, double lon);

/// What is shared of a stay, without weather. `zone` is the computer's, an IANA name.
Here here(const LocationAnchor& anchor, const PlaceFacts& facts, const PlaceBook& book, HerePrecision precision,
          Instant sampledAt, std::string zone);

} // namespace LocationLogic

} // namespace lumaro
