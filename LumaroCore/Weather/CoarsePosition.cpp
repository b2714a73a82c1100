// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Weather/CoarsePosition.h"

#include "LumaroCore/Support/JsonNumber.h"

#include <cmath>

namespace lumaro {

CoarsePosition CoarsePosition::of(Coordinates point) {
    return {static_cast<int>(std::round(point.latitude * 100)), static_cast<int>(std::round(point.longitude * 100))};
}

std::string queryOf(CoarsePosition position, std::string_view latitudeKey, std::string_view longitudeKey) {
    const auto at = position.degrees();
    std::string query{latitudeKey};
    query.append("=").append(textOfDouble(at.latitude));
    query.append("&").append(longitudeKey).append("=").append(textOfDouble(at.longitude));
    return query;
}

} // namespace lumaro
