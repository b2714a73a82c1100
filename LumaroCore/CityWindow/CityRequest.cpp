// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/CityWindow/CityRequest.h"

#include "LumaroCore/Support/JsonCodec.h"

#include <cmath>
#include <string_view>

namespace lumaro {
namespace {

// The key of the first value that is out of its limits; empty when none is.
std::string_view wrongKeyIn(const CityRequest& request) {
    if (!isWindowPage(request.page)) return "page";
    if (!isWindowKey(request.key)) return "key";
    if (!isOnEarth({request.lat, 0})) return "lat";
    if (!isOnEarth({0, request.lon})) return "lon";
    const bool isScale = request.scale >= 1 && request.scale <= CityRequest::maxScale;
    if (!isScale) return "scale";
    const auto isSide = [&](std::int64_t side) {
        return side >= CityRequest::minSide && side <= CityRequest::maxSide &&
               request.pixels(side) <= CityRequest::maxSide;
    };
    if (!isSide(request.width)) return "width";
    return isSide(request.height) ? "" : "height";
}

} // namespace

std::int64_t CityRequest::pixels(std::int64_t side) const {
    return std::llround(static_cast<double>(side) * scale);
}

bool readJson(JsonReader& reader, JsonValue value, CityRequest& out) {
    if (!reader.readObject(value, bindFields(out))) return false;
    const auto wrong = wrongKeyIn(out);
    return wrong.empty() || reader.failUnder(wrong, DecodeFault::invalidValue, "out of its limits");
}

void writeJson(JsonWriter& writer, const CityRequest& request) {
    writer.openObject();
    writeFields(writer, request);
    writer.closeObject();
}

template std::expected<CityRequest, DecodeError> Wire::decode<CityRequest>(std::string_view text);
template std::expected<std::string, EncodeError> Wire::encode<CityRequest>(const CityRequest& value);

} // namespace lumaro
