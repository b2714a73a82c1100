// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Astronomy/SunAndMoon.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <numbers>

namespace lumaro {
namespace {

constexpr double degree = std::numbers::pi / 180;
constexpr double astronomicalUnit = 149'597'870.7; // km
constexpr double earthRadius = 6378.14;            // km, at the equator

double sine(double degrees) {
    return std::sin(degrees * degree);
}
double cosine(double degrees) {
    return std::cos(degrees * degree);
}
double arcSine(double value) {
    return std::asin(std::clamp(value, -1.0, 1.0)) / degree;
}
double arcTangent(double y, double x) {
    return std::atan2(y, x) / degree;
}

/// In 0 to 360.
double turned(double degrees) {
    const double rest = std::fmod(degrees, 360);
    return rest < 0 ? rest + 360 : rest;
}
/// In -180 to 180.
double halfTurned(double degrees) {
    return turned(degrees + 180) - 180;
}

/// Since 2000 January 1, 12:00.
double daysSince2000(Instant instant) {
    using namespace std::chrono;
    constexpr Instant epoch{sys_days{year{2000} / 1 / 1} + hours{12}};
    constexpr double mostCenturies = 30;
    const double days = secondsBetween(epoch, instant) / 86'400;
    return std::clamp(days, -mostCenturies * 36'525, mostCenturies * 36'525);
}

/// On the ecliptic; the distance in kilometres.
struct Ecliptic {
    double longitude = 0;
    double latitude = 0;
    double distance = 0;
};

struct Times {
    explicit Times(Instant instant) : days{daysSince2000(instant)}, centuries{days / 36'525} {}

    double days;
    double centuries;
};

// Chapter 22, by its mean value and the largest term of nutation.
double obliquity(Times times) {
    const double node = 125.04 - 1934.136 * times.centuries;
    return 23.439291 - 0.0130042 * times.centuries + 0.00256 * cosine(node);
}

// Chapter 25, the lower accuracy.
Ecliptic sunOnEcliptic(Times times) {
    const double t = times.centuries;
    const double meanLongitude = 280.46646 + 36000.76983 * t + 0.0003032 * t * t;
    const double anomaly = 357.52911 + 35999.05029 * t - 0.0001537 * t * t;
    const double eccentricity = 0.016708634 - 0.000042037 * t;
    const double centre = (1.914602 - 0.004817 * t) * sine(anomaly) + (0.019993 - 0.000101 * t) * sine(2 * anomaly) +
                          0.000289 * sine(3 * anomaly);
    const double node = 125.04 - 1934.136 * t;
    const double distance =
        1.000001018 * (1 - eccentricity * eccentricity) / (1 + eccentricity * cosine(anomaly + centre));
    return {turned(meanLongitude + centre - 0.00569 - 0.00478 * sine(node)), 0, distance * astronomicalUnit};
}

/// Multiples of the moon's elongation, the sun's anomaly, the moon's anomaly and argument of latitude; the coefficients
/// of its sine in millionths of a degree, and of its cosine in metres.
struct Term {
    int elongation, sunAnomaly, moonAnomaly, latitude;
    double sine, cosine;
};

// Table 47.A down to 0.0036 degrees, and 47.B down to 0.0042.
constexpr std::array<Term, 27> longitudeAndDistance{
    {{0, 0, 1, 0, 6288774, -20905355}, {2, 0, -1, 0, 1274027, -3699111}, {2, 0, 0, 0, 658314, -2955968},
     {0, 0, 2, 0, 213618, -569925},    {0, 1, 0, 0, -185116, 48888},     {0, 0, 0, 2, -114332, -3149},
     {2, 0, -2, 0, 58793, 246158},     {2, -1, -1, 0, 57066, -152138},   {2, 0, 1, 0, 53322, -170733},
     {2, -1, 0, 0, 45758, -204586},    {0, 1, -1, 0, -40923, -129620},   {1, 0, 0, 0, -34720, 108743},
     {0, 1, 1, 0, -30383, 104755},     {2, 0, 0, -2, 15327, 10321},      {0, 0, 1, 2, -12528, 0},
     {0, 0, 1, -2, 10980, 79661},      {4, 0, -1, 0, 10675, -34782},     {0, 0, 3, 0, 10034, -23210},
     {4, 0, -2, 0, 8548, -21636},      {2, 1, -1, 0, -7888, 24208},      {2, 1, 0, 0, -6766, 30824},
     {1, 0, -1, 0, -5163, -8379},      {1, 1, 0, 0, 4987, -16675},       {2, -1, 1, 0, 4036, -12831},
     {2, 0, 2, 0, 3994, -10445},       {4, 0, 0, 0, 3861, -11650},       {2, 0, -3, 0, 3665, 14403}}};
constexpr std::array<Term, 13> latitudeTerms{{{0, 0, 0, 1, 5128122, 0},
                                              {0, 0, 1, 1, 280602, 0},
                                              {0, 0, 1, -1, 277693, 0},
                                              {2, 0, 0, -1, 173237, 0},
                                              {2, 0, -1, 1, 55413, 0},
                                              {2, 0, -1, -1, 46271, 0},
                                              {2, 0, 0, 1, 32573, 0},
                                              {0, 0, 2, 1, 17198, 0},
                                              {2, 0, 1, -1, 9266, 0},
                                              {0, 0, 2, -1, 8822, 0},
                                              {2, -1, 0, -1, 8216, 0},
                                              {2, 0, -2, -1, 4324, 0},
                                              {2, 0, 1, 1, 4200, 0}}};

// Chapter 47.
Ecliptic moonOnEcliptic(Times times) {
    const double t = times.centuries;
    const double meanLongitude = 218.3164477 + 481267.88123421 * t - 0.0015786 * t * t;
    const double elongation = 297.8501921 + 445267.1114034 * t - 0.0018819 * t * t;
    const double sunAnomaly = 357.5291092 + 35999.0502909 * t - 0.0001536 * t * t;
    const double moonAnomaly = 134.9633964 + 477198.8675055 * t + 0.0087414 * t * t;
    const double fromNode = 93.2720950 + 483202.0175233 * t - 0.0036539 * t * t;
    const double eccentricity = 1 - 0.002516 * t - 0.0000074 * t * t;
    const auto angle = [&](const Term& term) {
        return term.elongation * elongation + term.sunAnomaly * sunAnomaly + term.moonAnomaly * moonAnomaly +
               term.latitude * fromNode;
    };
    double longitude = 0;
    double distance = 0;
    for (const auto& term : longitudeAndDistance) {
        const double part = term.sunAnomaly == 0 ? 1 : eccentricity;
        longitude += term.sine * part * sine(angle(term));
        distance += term.cosine * part * cosine(angle(term));
    }
    double latitude = 0;
    for (const auto& term : latitudeTerms) {
        latitude += term.sine * (term.sunAnomaly == 0 ? 1 : eccentricity) * sine(angle(term));
    }
    return {turned(meanLongitude + longitude / 1e6), latitude / 1e6, 385000.56 + distance / 1000};
}

// Chapter 13.
Equatorial equatorial(const Ecliptic& place, double tilt) {
    const double declination =
        arcSine(sine(place.latitude) * cosine(tilt) + cosine(place.latitude) * sine(tilt) * sine(place.longitude));
    const double rightAscension =
        arcTangent(sine(place.longitude) * cosine(tilt) * cosine(place.latitude) - sine(place.latitude) * sine(tilt),
                   cosine(place.longitude) * cosine(place.latitude));
    return {turned(rightAscension), declination};
}

// Chapter 12: how far the place has turned past the meridian.
double hourAngle(Equatorial place, Coordinates point, Times times) {
    const double greenwich = 280.46061837 + 360.98564736629 * times.days;
    return halfTurned(greenwich + point.longitude - place.rightAscension);
}

} // namespace

Equatorial sunAmongStars(Instant instant) {
    const Times times{instant};
    return equatorial(sunOnEcliptic(times), obliquity(times));
}

Equatorial moonAmongStars(Instant instant) {
    const Times times{instant};
    return equatorial(moonOnEcliptic(times), obliquity(times));
}

Horizontal overHorizon(Equatorial place, Coordinates point, Instant instant) {
    const double angle = hourAngle(place, point, Times{instant});
    const double altitude = arcSine(sine(point.latitude) * sine(place.declination) +
                                    cosine(point.latitude) * cosine(place.declination) * cosine(angle));
    // Meeus counts the azimuth from the south.
    const double azimuth = 180 + arcTangent(sine(angle) * cosine(place.declination),
                                            cosine(angle) * sine(point.latitude) * cosine(place.declination) -
                                                sine(place.declination) * cosine(point.latitude));
    return {altitude, turned(azimuth)};
}

double refracted(double altitude) {
    // Sæmundsson's formula holds from the horizon up; below it the lift fades out.
    const double height = std::max(altitude, -1.0);
    const double lift = 1.02 / 60 / std::tan((height + 10.3 / (height + 5.11)) * degree);
    return altitude + std::max(0.0, lift) * std::clamp((altitude + 4) / 3, 0.0, 1.0);
}

Horizontal sunSeenFrom(Coordinates point, Instant instant) {
    auto place = overHorizon(sunAmongStars(instant), point, instant);
    place.altitude = refracted(place.altitude);
    return place;
}

MoonSeen moonSeenFrom(Coordinates point, Instant instant) {
    const Times times{instant};
    const auto sunPath = sunOnEcliptic(times);
    const auto moonPath = moonOnEcliptic(times);
    const auto sun = equatorial(sunPath, obliquity(times));
    const auto moon = equatorial(moonPath, obliquity(times));

    MoonSeen seen;
    seen.place = overHorizon(moon, point, instant);
    const double parallax = arcSine(earthRadius / moonPath.distance * cosine(seen.place.altitude));
    seen.place.altitude = refracted(seen.place.altitude - parallax);

    const double between = halfTurned(sun.rightAscension - moon.rightAscension);
    const double apart = std::acos(std::clamp(sine(sun.declination) * sine(moon.declination) +
                                                  cosine(sun.declination) * cosine(moon.declination) * cosine(between),
                                              -1.0, 1.0)) /
                         degree;
    const double phase =
        arcTangent(sunPath.distance * sine(apart), moonPath.distance - sunPath.distance * cosine(apart));
    seen.illuminated = (1 + cosine(phase)) / 2;
    seen.isWaxing = halfTurned(moonPath.longitude - sunPath.longitude) > 0;

    const double fromNorth = arcTangent(cosine(sun.declination) * sine(between),
                                        sine(sun.declination) * cosine(moon.declination) -
                                            cosine(sun.declination) * sine(moon.declination) * cosine(between));
    const double angle = hourAngle(moon, point, times);
    const double parallactic = arcTangent(sine(angle) * cosine(point.latitude),
                                          sine(point.latitude) * cosine(moon.declination) -
                                              cosine(point.latitude) * sine(moon.declination) * cosine(angle));
    seen.brightLimb = halfTurned(fromNorth - parallactic);
    return seen;
}

} // namespace lumaro
