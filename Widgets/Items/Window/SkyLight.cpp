// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/SkyLight.h"

#include <array>
#include <cmath>

namespace lumaro {
namespace {

/// A clear sky with the sun at that height.
struct ClearSky {
    double sunAltitude;
    Tone zenith, middle, horizon, sunward, sun, ambient;
};

// Day, golden hour, sunset, then civil, nautical and astronomical twilight, and night. From high to low.
constexpr std::array<ClearSky, 10> clearSkies{{
    {50, {78, 144, 204}, {134, 188, 226}, {212, 229, 232}, {236, 238, 226}, {255, 250, 236}, {255, 253, 247}},
    {20, {86, 150, 206}, {148, 197, 226}, {220, 229, 225}, {248, 238, 210}, {255, 243, 216}, {253, 247, 235}},
    {9, {96, 148, 202}, {166, 192, 216}, {236, 216, 204}, {255, 222, 176}, {255, 220, 166}, {250, 228, 198}},
    {3, {94, 130, 188}, {178, 172, 194}, {234, 190, 180}, {255, 194, 124}, {255, 186, 112}, {236, 192, 160}},
    {0, {86, 112, 170}, {158, 146, 178}, {208, 164, 168}, {255, 168, 98}, {255, 156, 88}, {196, 152, 146}},
    {-3.5, {58, 80, 140}, {112, 108, 158}, {158, 134, 166}, {250, 146, 96}, {244, 122, 88}, {126, 110, 132}},
    {-7, {36, 52, 106}, {64, 74, 128}, {94, 94, 142}, {206, 124, 108}, {190, 96, 98}, {76, 76, 108}},
    {-11, {25, 38, 84}, {42, 55, 104}, {64, 73, 122}, {116, 92, 124}, {98, 76, 108}, {60, 65, 100}},
    {-15, {18, 28, 64}, {29, 41, 84}, {46, 55, 100}, {60, 60, 106}, {56, 58, 96}, {42, 47, 78}},
    {-18, {15, 23, 55}, {24, 34, 72}, {40, 48, 90}, {42, 49, 91}, {50, 54, 90}, {38, 43, 72}},
}};

ClearSky clearSkyAt(double altitude) {
    if (altitude >= clearSkies.front().sunAltitude) return clearSkies.front();
    for (std::size_t i = 1; i < clearSkies.size(); ++i) {
        const auto& low = clearSkies[i];
        const auto& high = clearSkies[i - 1];
        if (altitude < low.sunAltitude) continue;
        const double t = (altitude - low.sunAltitude) / (high.sunAltitude - low.sunAltitude);
        const auto between = [&](Tone ClearSky::* tone) { return blend(low.*tone, high.*tone, t); };
        return {altitude,
                between(&ClearSky::zenith),
                between(&ClearSky::middle),
                between(&ClearSky::horizon),
                between(&ClearSky::sunward),
                between(&ClearSky::sun),
                between(&ClearSky::ambient)};
    }
    return clearSkies.back();
}

/// How dark clouds are that this weather comes out of.
double heaviness(const SkyView& view) {
    switch (view.sky) {
    case Sky::clear:
    case Sky::night:
    case Sky::cloud:
    case Sky::fog: return 0;
    case Sky::snow: return 0.12 + 0.12 * view.fall;
    case Sky::rain: return 0.22 + 0.26 * view.fall;
    case Sky::storm: return 0.66;
    }
    return 0;
}

/// The same brightness with little colour, as light is under clouds.
Tone greyed(Tone tone, double amount) {
    const float grey = tone.brightness();
    return blend(tone, {grey * 0.94F, grey * 1.0F, grey * 1.09F}, amount);
}

} // namespace

SkyLight lightOf(const SkyView& view) {
    const auto clear = clearSkyAt(view.sunAltitude);
    const auto& cover = view.clouds;
    const double heavy = heaviness(view);
    SkyLight light;
    const double open = (1 - cover.low) * (1 - 0.8 * cover.middle) * (1 - 0.2 * cover.high);
    light.overcast = rise(0.45, 1.0, 1 - open);
    light.direct = std::max(0.0, 1 - 1.02 * std::pow(1 - open, 2.2)) * (1 - 0.85 * view.mist);
    const auto under = [&](Tone tone, double amount) {
        return greyed(tone, amount * light.overcast) * static_cast<float>(1 - 0.62 * heavy * light.overcast);
    };
    light.zenith = under(clear.zenith, 0.7);
    light.middle = under(clear.middle, 0.7);
    light.horizon = under(clear.horizon, 0.6);
    light.sunward = under(blend(clear.sunward, clear.horizon, 0.75 * light.overcast), 0.5);
    light.sun = clear.sun;

    const double day = rise(-9, 8, view.sunAltitude);
    const double low =
        rise(14, 3, view.sunAltitude) * rise(-6, -1, view.sunAltitude); // how coloured the sun's light is
    // At night towns light the clouds from below.
    const double people = std::max(1'000.0, static_cast<double>(view.scenery.people));
    const double town = std::clamp((std::log10(people) - 3.5) / 3.5, 0.0, 1.0);
    const Tone white = blend(blend(Tone{76, 85, 124}, Tone{122, 102, 116}, town), Tone{255, 252, 244}, day);
    const double tinted = low * (0.82 - 0.5 * light.overcast) * (1 - 0.6 * heavy);
    light.cloudLit = blend(white, clear.sun, tinted) * static_cast<float>(1 - 0.34 * heavy * (0.4 + 0.6 * day));
    const Tone shade = blend(clear.zenith, clear.horizon, 0.62);
    light.cloudShade = greyed(blend(shade, white, 0.10 * day), 0.45) * static_cast<float>(0.93 - 0.62 * heavy * day);
    // The highest see the sun longest.
    light.cirrus = blend(blend(Tone{70, 76, 112}, Tone{255, 253, 248}, rise(-10, 6, view.sunAltitude)), {255, 164, 134},
                         0.8 * rise(8, 0, view.sunAltitude) * rise(-8, -2, view.sunAltitude));

    light.ambient = greyed(clear.ambient, 0.75 * light.overcast * (0.3 + 0.7 * day)) *
                    static_cast<float>((1 - 0.10 * light.overcast) * (1 - 0.42 * heavy * (0.35 + 0.65 * day)));
    // The moon lights the roofs a little.
    const double moon = view.moon.altitude > 0 ? view.moon.lit * light.direct * rise(-6, -14, view.sunAltitude) : 0;
    light.ambient = light.ambient + Tone{14, 17, 26} * static_cast<float>(moon);
    light.haze = blend(light.horizon, light.middle, 0.25);
    // Mist is a little brighter than the air around it.
    if (view.mist > 0) {
        const Tone veil = greyed(blend(light.haze, light.cloudLit, 0.30 * day), 0.35);
        light.haze = blend(light.haze, veil, view.mist);
        // It lies over the sky too.
        const double thick = rise(0.35, 0.95, view.mist);
        light.zenith = blend(light.zenith, veil * 0.94F, 0.86 * thick);
        light.middle = blend(light.middle, veil, 0.9 * thick);
        light.horizon = blend(light.horizon, veil, 0.7 * thick);
    }
    light.lamps = rise(1.5, -5.5, view.sunAltitude - 5 * heavy * light.overcast);
    light.stars = rise(-6.5, -15, view.sunAltitude) * (1 - 0.55 * moon) * (1 - rise(0.1, 0.6, view.mist));
    return light;
}

} // namespace lumaro
