// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/ViewScene.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <array>
#include <cmath>
#include <vector>

namespace lumaro {
namespace {

constexpr std::size_t glowSteps = 256;

constexpr double glowReach = 1.3; // heights of the view

/// Light around a body by the square of its distance.
struct Glow {
    float middleX = 0; ///< pixels
    float middleY = 0;
    Tone tone;
    std::array<float, glowSteps> strength{};

    bool isThere() const { return tone.r + tone.g + tone.b > 0; }
    /// Screened, so that bright skies do not burn out.
    Tone over(Tone air, int x, int y, float toStep) const {
        const float dx = static_cast<float>(x) - middleX;
        const float dy = static_cast<float>(y) - middleY;
        const float step = (dx * dx + dy * dy) * toStep;
        if (step >= static_cast<float>(glowSteps - 1)) return air;
        const auto i = static_cast<int>(step);
        const auto* const near = &strength[static_cast<std::size_t>(i)];
        const float light = (near[0] + (near[1] - near[0]) * (step - static_cast<float>(i))) / 255;
        return {air.r + (255 - air.r) * tone.r * light, air.g + (255 - air.g) * tone.g * light,
                air.b + (255 - air.b) * tone.b * light};
    }
};

Glow glowOf(const ViewScene& scene, QPointF body, Tone tone, double core, double halo) {
    const QPointF middle = (body - scene.rect.topLeft()) * scene.density;
    Glow glow{static_cast<float>(middle.x()), static_cast<float>(middle.y()), tone, {}};
    for (std::size_t i = 0; i < glowSteps; ++i) {
        // By the square of the distance, so that no root is needed for a pixel.
        const double distance = glowReach * std::sqrt(static_cast<double>(i) / (glowSteps - 1));
        const double faded = rise(glowReach, glowReach * 0.5, distance);
        glow.strength[i] =
            static_cast<float>(faded * (core * std::exp(-distance / 0.05) + halo * std::exp(-distance / 0.26)));
    }
    return glow;
}

/// The light of the sun in the air around it.
Glow sunGlow(const ViewScene& scene) {
    const double height = scene.view.sunAltitude;
    const double seen =
        rise(-9, 1, height) * (0.25 + 0.75 * scene.light.direct) * rise(150, 115, std::abs(scene.sunTurn));
    const double low = rise(25, 2, height);
    const Tone tone = scene.light.sun * static_cast<float>(seen * (1 - 0.75 * scene.light.overcast));
    return glowOf(scene, scene.sun, tone, 0.45 * rise(-3, 1, height), 0.16 + 0.24 * low);
}

Glow moonGlow(const ViewScene& scene) {
    const auto& moon = scene.view.moon;
    const double dark = rise(-3, -12, scene.view.sunAltitude);
    const double seen = rise(-1, 4, moon.altitude) * dark * moon.lit * (0.2 + 0.8 * scene.light.direct);
    return glowOf(scene, scene.moon, Tone{190, 196, 214} * static_cast<float>(seen), 0.30, 0.13);
}

/// What each column adds: how much of the sun's side it has, and how much of the far side.
struct Column {
    float sunward = 0;
    float away = 0;
};

std::vector<Column> columnsOf(const ViewScene& scene, int width) {
    std::vector<Column> columns(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x) {
        const double turn = 250 * ((x + 0.5) / width - 0.5);
        double apart = std::abs(turn - scene.sunTurn);
        apart = std::min(apart, 360 - apart);
        columns[static_cast<std::size_t>(x)] = {static_cast<float>(std::exp(-apart * apart / (2 * 62.0 * 62.0))),
                                                static_cast<float>(rise(60, 170, apart))};
    }
    return columns;
}

/// A row of the sky without the sun's side: its colour, and how much of the colours at the horizon it takes.
struct Row {
    Tone base;
    float warmth = 0;
    float belt = 0;   ///< the belt of Venus: the last light on the air opposite the sun
    float shadow = 0; ///< the shadow of the earth below it
    Tone added;       ///< the light of the town
};

// Towns light up the air over them.
Tone townGlow(const ViewScene& scene, double elevation) {
    const double people = std::max(1'000.0, static_cast<double>(scene.view.scenery.people));
    const double size = std::clamp((std::log10(people) - 3.5) / 3.5, 0.0, 1.0);
    const double dark = rise(-5, -12, scene.view.sunAltitude);
    const double clouds = 1 + 0.9 * scene.light.overcast;
    return Tone{58, 40, 26} * static_cast<float>(size * dark * clouds * std::exp(-std::max(0.0, elevation) * 3.6));
}

Row rowAt(const ViewScene& scene, double elevation) {
    const auto& light = scene.light;
    Row row;
    row.base = elevation < 0.4 ? blend(light.horizon, light.middle, rise(-0.12, 0.4, elevation))
                               : blend(light.middle, light.zenith, rise(0.4, 1.15, elevation) * 1.1);
    row.warmth = static_cast<float>(std::exp(-elevation * 3.4));
    const double hour =
        rise(-7.5, -3.5, scene.view.sunAltitude) * rise(2.5, -0.5, scene.view.sunAltitude) * (1 - light.overcast);
    const double rising = 0.10 + 0.045 * std::max(0.0, -scene.view.sunAltitude); // the shadow climbs as the sun sinks
    const double off = (elevation - rising - 0.10) / 0.085;
    row.belt = static_cast<float>(0.42 * hour * std::exp(-off * off));
    row.shadow = static_cast<float>(0.5 * hour * rise(rising + 0.06, rising - 0.08, elevation));
    row.added = townGlow(scene, elevation);
    return row;
}

Tone between(Tone a, Tone b, float t) {
    return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

/// -0.5 to 0.5, different for each pixel: without it the eye sees steps in a dark sky.
float grain(unsigned x, unsigned y) {
    unsigned hash = x * 0x8DA6B343U ^ y * 0xD8163841U;
    hash = (hash ^ (hash >> 13U)) * 0x9E3779B1U;
    return static_cast<float>(hash >> 16U) / 65536.0F - 0.5F;
}

} // namespace

void paintAir(QPainter& painter, const ViewScene& scene) {
    const QSize size = (scene.rect.size() * scene.density).toSize().expandedTo({1, 1});
    QImage image{size, QImage::Format_RGB32};
    const auto columns = columnsOf(scene, size.width());
    std::vector<Glow> glows;
    for (auto& glow : {sunGlow(scene), moonGlow(scene)}) {
        if (glow.isThere()) glows.push_back(glow);
    }
    const double horizon = (scene.horizon - scene.rect.top()) * scene.density;
    const auto toStep =
        static_cast<float>((glowSteps - 1) / std::pow(scene.rect.height() * scene.density * glowReach, 2));
    const Tone warmer = scene.light.sunward + scene.light.horizon * -1;
    for (int y = 0; y < size.height(); ++y) {
        const double elevation = (horizon - y) / horizon;
        const auto row = rowAt(scene, std::max(0.0, elevation));
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const auto& column = columns[static_cast<std::size_t>(x)];
            Tone tone = row.base + warmer * (column.sunward * row.warmth);
            if (row.belt > 0.01F) tone = between(tone, {222, 158, 172}, column.away * row.belt);
            if (row.shadow > 0.01F) tone = between(tone, scene.light.zenith, column.away * row.shadow);
            tone = tone + row.added;
            for (const auto& glow : glows) tone = glow.over(tone, x, y, toStep);
            const float noise = 1.6F * grain(static_cast<unsigned>(x), static_cast<unsigned>(y)) + 0.5F;
            const auto part = [noise](float value) {
                return static_cast<unsigned>(static_cast<int>(std::clamp(value + noise, 0.0F, 255.0F)));
            };
            line[x] = 0xFF000000U | part(tone.r) << 16U | part(tone.g) << 8U | part(tone.b);
        }
    }
    painter.drawImage(scene.rect, image);
}

} // namespace lumaro
