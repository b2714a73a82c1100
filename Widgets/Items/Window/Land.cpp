// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/LandParts.h"
#include "Widgets/Items/Window/Noise.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

constexpr std::uint64_t ofHills = 31;
constexpr std::uint64_t ofSea = 37;
constexpr Tone meadow{142, 160, 104};
constexpr Tone forest{92, 122, 92};
constexpr Tone rock{132, 130, 140};
constexpr Tone snow{244, 246, 250};

/// A line of hills from edge to edge, by its height at each part of the width.
struct Ridge {
    double start = 0; ///< where in the noise
    double height = 0;
    double pace = 1; ///< hills in a width
    double rough = 0;

    double at(double x) const {
        const auto u = static_cast<float>(start + x * pace);
        const double body = cloudiness<2>(u, 3.7F);
        const double peaks = 1 - std::abs(2 * cloudiness<4>(u * 1.3F, 9.1F) - 1) * 1.6;
        return height * (body * (1 - rough) + std::max(0.0, peaks) * rough);
    }
};

QPainterPath underRidge(const ViewScene& scene, const Ridge& ridge, double lowered = 0) {
    constexpr int steps = 110;
    QPainterPath path{scene.rect.bottomLeft()};
    for (int i = 0; i <= steps; ++i) {
        const double x = static_cast<double>(i) / steps;
        path.lineTo(scene.rect.left() + scene.rect.width() * x,
                    scene.horizon + lowered - ridge.at(x) * scene.rect.height());
    }
    path.lineTo(scene.rect.bottomRight());
    path.closeSubpath();
    return path;
}

void fillRidge(QPainter& painter, const ViewScene& scene, const Ridge& ridge, Tone tone, Distance distance) {
    const Tone upper = distance.seen(scene, tone);
    // Mist lies in the valleys.
    const Tone lower = blend(upper, scene.light.haze, 0.30 + 0.3 * distance.far);
    QLinearGradient body{0, scene.horizon - ridge.height * scene.rect.height(), 0, scene.horizon + 8 * scene.unit};
    body.setColorAt(0, upper.colour());
    body.setColorAt(1, lower.colour());
    painter.fillPath(underRidge(scene, ridge), body);
}

/// Rock and snow in the light, by the side that they turn to the sun.
class MountainTones {
public:
    MountainTones(const ViewScene& scene, const Ridge& ridge)
        : ridge_(ridge), haze_(scene.light.haze), sunSide_(std::clamp(scene.sunTurn / 60, -1.0, 1.0)),
          snowLine_(scene.view.snowOnRoofs > 0 ? 0.12 : 0.56) {
        const auto& light = scene.light;
        const Tone lit = blend(light.ambient, light.sun, 0.55 * light.direct * rise(-2, 3, scene.view.sunAltitude));
        const auto tone = [&](Tone own, Tone under) { return blend(own * under, haze_, 0.42 + 0.5 * scene.view.mist); };
        rockLit_ = tone(rock, lit);
        rockShade_ = tone(rock * 0.78F, light.ambient);
        snowLit_ = tone(snow, lit);
        snowShade_ = tone({196, 210, 234}, light.ambient);
    }

    /// At a part of the width, so far below the ridge, which falls off to the right by `fall`.
    Tone at(double x, double height, double depth, double fall) const {
        // Spurs run down from the ridge: their slope across says which side has the light.
        const auto u = static_cast<float>(x * ridge_.pace * 4.2 + depth * 3);
        const auto v = static_cast<float>(depth * 7);
        const float spur = cloudiness<3>(u, v);
        const double slope = (spur - cloudiness<3>(u + 0.16F, v)) * 5.5 + fall * 9;
        const double light = rise(-0.75, 0.75, slope * (sunSide_ >= 0 ? -1 : 1) * (0.5 + 0.5 * std::abs(sunSide_)));
        // Snow stays longest in the gullies and off the light.
        const auto streak = static_cast<double>(noiseAt(u * 7, v * 2.2F));
        const double line =
            ridge_.height * (snowLine_ + (spur - 0.5) * 0.5 + (streak - 0.5) * 0.42 + 0.10 * (light - 0.5));
        const double white = rise(line - 0.018, line + 0.018, height);
        const Tone there = blend(blend(rockShade_, rockLit_, light), blend(snowShade_, snowLit_, light), white);
        return blend(there, haze_, 0.75 * rise(ridge_.height * 0.55, -0.02, height));
    }

private:
    const Ridge& ridge_;
    Tone haze_;
    double sunSide_;
    double snowLine_; ///< a part of the ridge's height
    Tone rockLit_;
    Tone rockShade_;
    Tone snowLit_;
    Tone snowShade_;
};

/// Mountains as a picture of pixels: rock that falls off both sides of the ridge, and snow above a line.
void paintMountains(QPainter& painter, const ViewScene& scene, const Ridge& ridge) {
    constexpr double foot = 0.04; // below the horizon
    const double density = std::min(std::max(1.0, scene.density / 1.6), 200 / scene.rect.height());
    const double high = ridge.height * 1.05;
    const QRectF place{scene.rect.left(), scene.horizon - high * scene.rect.height(), scene.rect.width(),
                       (high + foot) * scene.rect.height()};
    const QSize size = (place.size() * density).toSize().expandedTo({2, 2});
    QImage image{size, QImage::Format_ARGB32_Premultiplied};
    image.fill(Qt::transparent);
    const MountainTones tones{scene, ridge};
    for (int column = 0; column < size.width(); ++column) {
        const double x = (column + 0.5) / size.width();
        const double top = ridge.at(x);
        const double fall = top - ridge.at(x + 0.012);
        for (int row = 0; row < size.height(); ++row) {
            const double height = high - (row + 0.5) / size.height() * (high + foot);
            const double edge = std::clamp((top - height) * scene.rect.height() * density + 0.5, 0.0, 1.0);
            if (edge <= 0) continue;
            const auto there = tones.at(x, height, top - height, fall);
            const auto part = [&](float value) {
                return static_cast<unsigned>(std::clamp(value, 0.0F, 255.0F) * static_cast<float>(edge));
            };
            reinterpret_cast<QRgb*>(image.scanLine(row))[column] =
                static_cast<unsigned>(255 * edge) << 24U | part(there.r) << 16U | part(there.g) << 8U | part(there.b);
        }
    }
    painter.drawImage(place, image);
}

/// Light of the sun or the moon on the water, towards the window.
void paintGlitter(QPainter& painter, const ViewScene& scene, double x, Tone tone, double strength, Chance chance) {
    if (strength < 0.02) return;
    const double deep = scene.rect.bottom() - scene.horizon;
    for (int i = 0; i < 170; ++i) {
        const double t = std::pow(chance.part(), 1.5);
        const double spread = scene.rect.height() * (0.022 + 0.20 * t);
        const double off = (chance.part() + chance.part() + chance.part() - 1.5) / 1.5; // about the middle
        const double length = scene.unit * (0.8 + 5 * t) * (0.5 + chance.part());
        const double thick = scene.unit * (0.22 + 0.75 * t);
        const double opacity = strength * (1 - 0.8 * std::abs(off)) * (0.35 + 0.65 * chance.part()) * (1 - 0.35 * t);
        painter.setBrush(tone.colour(std::min(1.0, opacity)));
        painter.drawRoundedRect(
            QRectF{x + off * spread - length / 2, scene.horizon + 0.5 * scene.unit + t * deep, length, thick},
            thick / 2, thick / 2);
    }
}

} // namespace

Tone Distance::seen(const ViewScene& scene, Tone own) const {
    const double mist = scene.view.mist * (0.30 + 0.75 * far);
    const double fade = 1 - (1 - 0.66 * far) * (1 - std::min(0.97, mist));
    return blend(own * scene.light.ambient, scene.light.haze, fade);
}

void paintHills(QPainter& painter, const ViewScene& scene, const TownLook& look) {
    Chance chance{scene.view.scenery.seed, ofHills};
    const double start = chance.between(0, 50);
    const int hills = std::clamp(scene.view.scenery.hills, 0, 3);
    const Tone white = snow;
    const auto tone = [&](Tone own) { return blend(own, white, 0.8 * scene.view.snowOnRoofs); };
    if (hills == 3) paintMountains(painter, scene, {start, 0.46, 1.9, 0.75});
    if (hills >= 2) fillRidge(painter, scene, {start + 20, 0.26, 2.6, 0.25}, tone(forest), {0.82});
    if (hills >= 1)
        fillRidge(painter, scene, {start + 40, hills == 1 ? 0.17 : 0.16, 2.1, 0.08}, tone(blend(forest, meadow, 0.4)),
                  {0.66});
    // The plain.
    QLinearGradient ground{0, scene.horizon - 2 * scene.unit, 0, scene.rect.bottom()};
    const Tone field = tone(look.isVillage ? meadow : blend(meadow, Tone{150, 146, 136}, 0.75));
    ground.setColorAt(0, Distance{0.9}.seen(scene, field).colour());
    ground.setColorAt(1, Distance{0.1}.seen(scene, field * 0.9F).colour());
    painter.fillPath(underRidge(scene, {start + 60, 0.035, 3, 0}, 1.2 * scene.unit), ground);
}

void paintSea(QPainter& painter, const ViewScene& scene, const TownLook&) {
    const QRectF sea{scene.rect.left(), scene.horizon, scene.rect.width(), scene.rect.bottom() - scene.horizon};
    // Water has the colours of the sky, the steeper one looks down at it the less.
    const Tone deep = Tone{72, 112, 132} * scene.light.ambient;
    QLinearGradient water{sea.topLeft(), sea.bottomLeft()};
    water.setColorAt(0, blend(blend(scene.light.horizon, scene.light.middle, 0.45), deep, 0.30).colour());
    water.setColorAt(0.25, blend(blend(scene.light.middle, scene.light.horizon, 0.3), deep, 0.52).colour());
    water.setColorAt(1, blend(scene.light.zenith, deep, 0.6).colour());
    painter.fillRect(sea, water);
    Chance chance{scene.view.scenery.seed, ofSea};
    for (int i = 0; i < 60; ++i) {
        const double t = std::pow(chance.part(), 1.4);
        const double length = scene.unit * (3 + 16 * t) * (0.5 + chance.part());
        const double x = sea.left() + sea.width() * chance.part() - length / 2;
        const bool isLight = chance.happens(0.55);
        const Tone tone = isLight ? blend(scene.light.horizon, scene.light.sun, 0.2) : deep * 0.8F;
        painter.setBrush(tone.colour(0.10 + 0.13 * chance.part()));
        painter.drawRoundedRect(QRectF{x, sea.top() + t * sea.height(), length, scene.unit * (0.25 + 0.7 * t)},
                                scene.unit * 0.3, scene.unit * 0.3);
    }
    const auto& view = scene.view;
    const double sun =
        rise(-2.5, 1, view.sunAltitude) * rise(62, 25, view.sunAltitude) * rise(132, 112, std::abs(scene.sunTurn));
    paintGlitter(painter, scene, scene.sun.x(), blend(scene.light.sun, {255, 250, 236}, 0.4),
                 sun * scene.light.direct * 0.95, chance);
    const double moon = rise(-1, 3, view.moon.altitude) * rise(-4, -12, view.sunAltitude) * std::sqrt(view.moon.lit);
    paintGlitter(painter, scene, scene.moon.x(), {236, 232, 214}, moon * scene.light.direct * 0.62, chance);
}

void paintMist(QPainter& painter, const ViewScene& scene, Distance distance) {
    const double amount = scene.view.mist * (0.25 + 0.6 * distance.far);
    if (amount < 0.03) return;
    QLinearGradient veil{0, scene.rect.top() + scene.rect.height() * (0.62 - 0.5 * scene.view.mist), 0,
                         scene.rect.bottom()};
    const Tone tone = scene.light.haze;
    veil.setColorAt(0, tone.colour(0));
    veil.setColorAt(0.45, tone.colour(amount * 0.55));
    veil.setColorAt(0.8, tone.colour(amount));
    veil.setColorAt(1, tone.colour(amount * 0.8));
    painter.fillRect(scene.rect, veil);
}

void paintLand(QPainter& painter, const ViewScene& scene) {
    painter.setPen(Qt::NoPen);
    const TownLook look{scene.view};
    paintHills(painter, scene, look);
    if (look.isByTheSea) paintSea(painter, scene, look);
    paintMist(painter, scene, {1});
    paintTown(painter, scene, look);
}

} // namespace lumaro
