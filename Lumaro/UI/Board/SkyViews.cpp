// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/SkyViews.h"

#include "LumaroCore/Astronomy/SunAndMoon.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace lumaro {
namespace {

double inSteps(double value, double step) {
    return std::round(value / step) * step;
}

/// How hard it rains or snows, by the WMO code.
double fallOf(std::int64_t code, Sky sky) {
    switch (code) {
    case 51:
    case 56: return 0.1;
    case 53: return 0.2;
    case 55:
    case 57:
    case 77: return 0.3;
    case 61:
    case 66:
    case 71: return 0.4;
    case 80:
    case 85: return 0.5;
    case 63:
    case 73: return 0.65;
    case 67:
    case 81:
    case 86:
    case 95: return 0.8;
    case 65:
    case 75:
    case 82:
    case 96:
    case 99: return 1;
    default: return sky == Sky::rain || sky == Sky::snow || sky == Sky::storm ? 0.5 : 0;
    }
}

/// The clouds that a sky has at least, and those it has where nobody counted them.
struct UsualClouds {
    SkyView::Clouds least;
    SkyView::Clouds unknown;
};

UsualClouds usualClouds(Sky sky) {
    switch (sky) {
    case Sky::clear:
    case Sky::night: return {{}, {0.05, 0, 0.1}};
    case Sky::cloud: return {{}, {0.5, 0.2, 0.2}};
    case Sky::fog: return {{}, {0.3, 0, 0}};
    case Sky::rain: return {{0.7, 0.3, 0}, {0.85, 0.8, 0.4}};
    case Sky::snow: return {{0.7, 0.3, 0}, {0.9, 0.7, 0.4}};
    case Sky::storm: return {{0.9, 0.6, 0}, {1, 0.9, 0.6}};
    }
    return {};
}

double coverOf(const std::optional<double>& percent, double least, double unknown) {
    if (!percent) return unknown;
    return std::max(least, inSteps(std::clamp(*percent / 100, 0.0, 1.0), 0.05));
}

/// 0 with 20 km of sight, 1 with 150 m.
double mistOf(const std::optional<double>& visibility, Sky sky) {
    const double metres = std::clamp(visibility.value_or(sky == Sky::fog ? 300 : 30'000), 50.0, 30'000.0);
    const double mist = std::clamp(std::log(20'000 / metres) / std::log(20'000 / 150.0), 0.0, 1.0);
    return inSteps(sky == Sky::fog ? std::max(mist, 0.7) : mist, 0.05);
}

void addWeather(SkyView& view, const Weather& weather) {
    constexpr double horizon = -0.27;
    view.sky = skyOf(weather.code, view.sunAltitude > horizon);
    const auto usual = usualClouds(view.sky);
    view.clouds = {coverOf(weather.cloudLow, usual.least.low, usual.unknown.low),
                   coverOf(weather.cloudMid, usual.least.middle, usual.unknown.middle),
                   coverOf(weather.cloudHigh, usual.least.high, usual.unknown.high)};
    view.fall = fallOf(weather.code, view.sky);
    view.windKmh = inSteps(std::clamp(weather.windKmh.value_or(8), 0.0, 120.0), 4);
    view.windFrom = inSteps(std::clamp(weather.windDeg.value_or(250), 0.0, 360.0), 10);
    view.mist = mistOf(weather.visibilityM, view.sky);
    // Around the freezing point it melts where people heat.
    if (view.sky == Sky::snow) view.snowOnRoofs = weather.tempC <= 0 ? 1 : 0.45;
}

} // namespace

SkyView viewFrom(Coordinates point, Instant now, double hour, const std::optional<Weather>& weather,
                 const Scenery& scenery) {
    const auto minute = std::chrono::floor<std::chrono::minutes>(now);
    const auto sun = sunSeenFrom(point, minute);
    const auto moon = moonSeenFrom(point, minute);
    SkyView view;
    view.sunAltitude = inSteps(sun.altitude, 0.1);
    view.sunAzimuth = inSteps(sun.azimuth, 0.25);
    view.moon = {.altitude = inSteps(moon.place.altitude, 0.1),
                 .azimuth = inSteps(moon.place.azimuth, 0.25),
                 .lit = inSteps(moon.illuminated, 0.01),
                 .brightLimb = inSteps(moon.brightLimb, 1),
                 .isWaxing = moon.isWaxing};
    view.hour = hour;
    view.latitude = static_cast<int>(std::lround(point.latitude));
    view.scenery = scenery;
    view.clouds = usualClouds(Sky::clear).unknown;
    if (view.sunAltitude < 0) view.sky = Sky::night;
    if (weather) addWeather(view, *weather);
    return view;
}

SkyView viewAtHour(double hour, const std::optional<Weather>& weather, const Scenery& scenery) {
    SkyView view;
    view.sunAltitude = inSteps(-50 * std::cos(hour / 12 * std::numbers::pi), 0.1);
    view.sunAzimuth = inSteps(15 * hour, 0.25);
    view.hour = hour;
    view.scenery = scenery;
    view.clouds = usualClouds(Sky::clear).unknown;
    if (view.sunAltitude < 0) view.sky = Sky::night;
    if (weather) addWeather(view, *weather);
    return view;
}

Scenery sceneryUnknownAt(Coordinates point) {
    const auto town = rounded(point, 1);
    const auto tenths = [](double degrees) { return static_cast<std::uint64_t>(std::lround(degrees * 10) + 4'000); };
    return {
        .seed = tenths(town.latitude) << 32U | tenths(town.longitude), .people = 0, .isByTheSea = false, .hills = 0};
}

} // namespace lumaro
