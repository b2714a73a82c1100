// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Location/PlaceBook.h"

#include "LumaroCore/Presence/Here.h"
#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/Unicode.h"

namespace lumaro {

std::string PlaceBook::placeKey(double lat, double lon) {
    const auto at = rounded({lat, lon}, 3);
    return textOfDouble(at.latitude) + "," + textOfDouble(at.longitude);
}

std::optional<std::string> PlaceBook::name(double lat, double lon) const {
    const auto found = names.find(placeKey(lat, lon));
    return found == names.end() ? std::nullopt : std::optional{found->second};
}

bool PlaceBook::rename(double lat, double lon, std::string_view to) {
    auto key = placeKey(lat, lon);
    if (trimmed(to).empty()) {
        names.erase(key);
        return true;
    }
    if (names.size() >= maxNames && !names.contains(key)) return false;
    names.insert_or_assign(std::move(key), Here::clampLabel(to));
    return true;
}

} // namespace lumaro
