// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/ReverseGeocoder.h"
#include "LumaroCore/Places/PlaceFormat.h"
#include "LumaroCore/Places/Scenery.h"
#include "LumaroCore/Support/Coordinates.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// A town, or a part of one. Its texts are the table's.
struct Place {
    std::string_view name;    ///< as the people who live there write it, mostly
    std::string_view country; ///< ISO 3166-1, two letters
    std::string_view zone;    ///< IANA name of its time zone
    Coordinates position;
    std::uint32_t people = 0; ///< 0 where nobody counted

    bool operator==(const Place&) const = default;
};

/// The towns of the world in a packed table (docs/places.md), read where it lies; nothing is copied. Cheap to copy; may
/// be asked on any thread.
class PlaceTable {
public:
    /// No answer of `find` is longer.
    static constexpr std::size_t mostFound = 100;
    /// No text is looked for that is longer than this many bytes, and than any name.
    static constexpr std::size_t longestTyped = 200;

    /// The bytes outlive the table. Reads all of them once; the error says what is wrong with them.
    static std::expected<PlaceTable, std::string> open(std::span<const std::byte> bytes);

    /// The town at a point as `locality`, with its zone, and the part of the town as `subLocality` if one is
    /// within 3 km; empty where no town is within 60 km, and for a point that is not on the earth. Of several towns it
    /// is the one whose reach the point is deepest in, so that a suburb's small neighbour is not named in the middle of
    /// a city.
    PlaceFacts factsAt(Coordinates point) const;

    /// Of the town that `factsAt` names; far from every town a seed of the point, rounded to one decimal, alone.
    Scenery sceneryAt(Coordinates point) const;

    /// The places whose name, or another name of theirs, begins with what was typed (`nameKey`); of towns with 20,000
    /// people and more also those where a later word does. Those with more people first, where people count a twentieth
    /// when it is another name, and a hundredfold when a name was typed in full: there "york" is York, then New York
    /// City, and "au" is not lost behind Auckland. At most `most` and `mostFound`, each once.
    std::vector<Place> find(std::string_view typed, std::size_t most) const;

private:
    enum class Kind : std::uint8_t { town, section };

    explicit PlaceTable(PlaceFormat::Parts parts) : parts_{parts} {}

    std::optional<PlaceFormat::Record> nearest(Coordinates point, Kind kind, double farthestMetres) const;
    std::string_view zoneOf(const PlaceFormat::Record& record) const;
    Place placeOf(const PlaceFormat::Record& record) const;

    PlaceFormat::Parts parts_;
};

} // namespace lumaro
