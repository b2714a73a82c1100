// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Fields.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// A person's own names for places, each good for about a hundred metres around.
struct PlaceBook {
    static constexpr std::size_t maxNames = 1000;

    std::map<std::string, std::string> names; ///< by place key

    /// "52.52,13.405": both rounded to three decimals, in their shortest form.
    static std::string placeKey(double lat, double lon);

    std::optional<std::string> name(double lat, double lon) const;
    /// Names a place, or forgets its name when nothing but white space is given. A name is kept without white space at
    /// its ends, and as far as it fits (`Here::clampLabel`). False when there is no room for another name.
    bool rename(double lat, double lon, std::string_view to);

    static constexpr auto fields() { return std::tuple{Field{"names", &PlaceBook::names}}; }
    bool operator==(const PlaceBook&) const = default;
};

} // namespace lumaro
