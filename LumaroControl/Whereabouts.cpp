// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/Whereabouts.h"

#include "LumaroControl/Moments.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/JsonCodec.h"
#include "LumaroCore/Support/JsonNumber.h"
#include "LumaroCore/Support/OneLine.h"

#include <cmath>

namespace lumaro {
namespace {

std::string placeText(const Here& here) {
    auto text = onOneLine(here.label) + ", " + textOfDouble(here.lat) + "," + textOfDouble(here.lon) + " (" +
                std::string{nameOf(here.precision)} + ")";
    if (const auto& weather = here.weather) {
        text += ", " + textOfDouble(std::round(weather->tempC)) + " °C, " + std::string{nameOf(weather->sky())};
    }
    text += ", since " + momentText(here.since);
    if (!here.tz.empty()) text += ", " + onOneLine(here.tz);
    return text;
}

std::string ownText(const Whereabouts& whereabouts) {
    if (!whereabouts.shares) return "not shared";
    if (whereabouts.own) return placeText(*whereabouts.own);
    switch (whereabouts.access) {
    case LocationAccess::denied: return "location is off for this app";
    case LocationAccess::restricted: return "this computer does not tell where it is";
    case LocationAccess::notDetermined:
    case LocationAccess::authorized: break;
    }
    return "waiting for a fix";
}

} // namespace

std::string whereaboutsJson(const Whereabouts& whereabouts) {
    const auto text = Wire::encode(whereabouts);
    return (text ? *text : "{}") + "\n";
}

std::string whereaboutsText(const Whereabouts& whereabouts, std::string_view partner) {
    const auto hours = [](const std::optional<std::string>& zone) {
        return zone ? "; hours of " + onOneLine(*zone) : std::string{};
    };
    return "you: " + ownText(whereabouts) + hours(whereabouts.zone) + "\n" + std::string{partner} + ": " +
           (whereabouts.partner ? placeText(*whereabouts.partner) : "no word from there yet") +
           hours(whereabouts.partnerZone) + "\n";
}

} // namespace lumaro
