// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/Weather.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// How coarse a shared position is.
enum class HerePrecision : std::uint8_t {
    neighbourhood, ///< two decimals of a degree
    block,         ///< three decimals
};

constexpr std::array<std::string_view, 2> namesOf(HerePrecision) {
    return {"neighbourhood", "block"};
}

/// How many decimals of a degree are kept.
constexpr int decimalsOf(HerePrecision precision) {
    return precision == HerePrecision::neighbourhood ? 2 : 3;
}

/// Roughly where a person is. What leaves the computer is coarsened.
struct Here {
    static constexpr std::size_t maxLabelCharacters = 40;
    static constexpr std::size_t maxLabelBytes = 2048;

    double lat = 0;
    double lon = 0;
    std::string label; ///< the place's name for people
    std::optional<std::string> city;
    std::string tz; ///< IANA name of the device's time zone
    HerePrecision precision = HerePrecision::neighbourhood;
    Instant since;     ///< of the stay at this spot
    Instant sampledAt; ///< of the position
    std::optional<Weather> weather;

    static constexpr auto fields() {
        return std::tuple{Field{"lat", &Here::lat},
                          Field{"lon", &Here::lon},
                          Field{"label", &Here::label},
                          Field{"city", &Here::city},
                          Field{"tz", &Here::tz},
                          Field{"precision", &Here::precision},
                          Field{"since", &Here::since},
                          Field{"sampledAt", &Here::sampledAt},
                          FieldIfKnown{"weather", &Here::weather}};
    }
    bool operator==(const Here&) const = default;

    /// A name without white space at its ends, as far as it fits; "somewhere" when nothing is left.
    static std::string clampLabel(std::string_view text);
    /// With the position rounded to that precision's decimals, and the names clamped.
    Here coarsened(HerePrecision to) const;
    /// The same place, by the same name, of the same stay.
    bool isSameSpot(const Here& as) const;
};

} // namespace lumaro
