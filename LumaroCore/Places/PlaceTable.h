// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Places/Scenery.h"
#include "LumaroCore/Support/Coordinates.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// A town, or a part of one.
struct Place {
    std::string_view name;    ///< as the people who live there write it, mostly
    std::string_view country; ///< ISO 3166-1, two letters
    std::string_view zone;    ///< IANA name of its time zone
    Coordinates position;
    std::uint32_t people = 0;
};

/// The towns of the world in a packed table, read where it lies; nothing is copied. Cheap to copy.
class PlaceTable {
public:
    /// The bytes outlive the table. The error says what is wrong with them.
    static std::expected<PlaceTable, std::string> open(std::span<const std::byte> bytes);

    /// The town at a point as `locality`, with its zone, and the part of the town as `subLocality`; empty where none is
    /// near.
    PlaceFacts factsAt(Coordinates point) const;
    Scenery sceneryAt(Coordinates point) const;
    /// The towns whose name begins with what was typed, without regard to case and accents; those with more people
    /// first.
    std::vector<Place> find(std::string_view typed, std::size_t most) const;
};

} // namespace lumaro
