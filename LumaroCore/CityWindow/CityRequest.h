// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/WindowKey.h"
#include "LumaroCore/Support/Coordinates.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/Instant.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>

namespace lumaro {

/// What `lumaro-cityview` reads: which page, what the page learns, and how large the picture is. One that was decoded
/// is within all limits.
struct CityRequest {
    static constexpr std::size_t maxBytes = std::size_t{8} * 1024; ///< of its JSON
    static constexpr std::int64_t minSide = 16;
    static constexpr std::int64_t maxSide = 2048; ///< in pixels, of each side
    static constexpr double maxScale = 4;

    std::string page; ///< as in `WindowKey`
    std::string key;
    double lat = 0; ///< degrees, as coarse as the page may know them
    double lon = 0;
    Instant at;             ///< the moment that is shown
    std::int64_t width = 0; ///< of the page, in its own pixels
    std::int64_t height = 0;
    double scale = 1; ///< pixels of the picture for each of the page's, 1 to `maxScale`

    static constexpr bool hasOwnJson = true;
    static constexpr auto fields() {
        return std::tuple{Field{"page", &CityRequest::page},     Field{"key", &CityRequest::key},
                          Field{"lat", &CityRequest::lat},       Field{"lon", &CityRequest::lon},
                          Field{"at", &CityRequest::at},         Field{"width", &CityRequest::width},
                          Field{"height", &CityRequest::height}, Field{"scale", &CityRequest::scale}};
    }
    /// A side of the picture, from one of the page.
    std::int64_t pixels(std::int64_t side) const;

    bool operator==(const CityRequest&) const = default;
};

} // namespace lumaro
