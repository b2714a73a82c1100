// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/Chance.h"
#include "Widgets/Items/Window/ViewScene.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <cmath>

namespace lumaro {
namespace {

constexpr std::uint64_t ofStars = 11;

void paintStars(QPainter& painter, const ViewScene& scene) {
    if (scene.light.stars <= 0) return;
    Chance chance{scene.view.scenery.seed, ofStars};
    // Where more people live, fewer are seen.
    const double people = std::max(1'000.0, static_cast<double>(scene.view.scenery.people));
    const int count = 210 - static_cast<int>(120 * std::clamp((std::log10(people) - 3.5) / 3.5, 0.0, 1.0));
    for (int i = 0; i < count; ++i) {
        const double x = scene.rect.left() + scene.rect.width() * chance.part();
        const double depth = std::pow(chance.part(), 1.25);
        const double y = scene.rect.top() + (scene.horizon - scene.rect.top()) * depth;
        const double magnitude = std::pow(chance.part(), 3.2); // few are bright
        const double warmth = chance.part();
        // At dusk the bright ones come first.
        const double out = rise(0.9 - magnitude, 1.1 - magnitude, scene.light.stars);
        const double opacity = scene.light.stars * out * (0.22 + 0.78 * magnitude) * rise(1.0, 0.55, depth);
        if (opacity < 0.02) continue;
        // None shines through the moon.
        if (std::hypot(x - scene.moon.x(), y - scene.moon.y()) < 6.2 * scene.unit) continue;
        const Tone tone = blend(Tone{206, 220, 255}, Tone{255, 240, 212}, warmth);
        const double radius = scene.unit * (0.20 + 0.34 * magnitude);
        if (magnitude > 0.72) {
            painter.setBrush(tone.colour(opacity * 0.16));
            painter.drawEllipse(QPointF{x, y}, radius * 2.6, radius * 2.6);
        }
        painter.setBrush(tone.colour(opacity));
        painter.drawEllipse(QPointF{x, y}, radius, radius);
    }
}

void paintSun(QPainter& painter, const ViewScene& scene) {
    if (scene.view.sunAltitude < -1.5 || std::abs(scene.sunTurn) > 130) return;
    const double radius = scene.unit * (5.2 + 1.3 * rise(15, 1, scene.view.sunAltitude));
    const double seen = 0.06 + 0.94 * scene.light.direct;
    const double low = rise(12, 0, scene.view.sunAltitude);
    const Tone core = blend(Tone{255, 252, 238}, Tone{255, 226, 158}, low);
    const Tone edge = blend(Tone{255, 246, 214}, Tone{255, 184, 104}, low);
    QRadialGradient face{scene.sun, radius};
    face.setColorAt(0, core.colour(seen));
    face.setColorAt(0.72, blend(core, edge, 0.55).colour(seen));
    face.setColorAt(0.9, edge.colour(seen));
    face.setColorAt(1, edge.colour(0));
    painter.setBrush(face);
    painter.drawEllipse(scene.sun, radius, radius);
}

/// The lit part of a disc about the origin, with the bright limb upwards.
QPainterPath litPart(double radius, double lit) {
    QPainterPath path{{radius, 0}};
    path.arcTo(QRectF{-radius, -radius, 2 * radius, 2 * radius}, 0, 180);
    // The edge between light and dark is half an ellipse: through the lit half for a crescent, else through the other.
    const double depth = radius * std::abs(2 * lit - 1);
    path.arcTo(QRectF{-radius, -depth, 2 * radius, 2 * depth}, 180, lit < 0.5 ? -180 : 180);
    path.closeSubpath();
    return path;
}

void paintSeas(QPainter& painter, double radius, double opacity) {
    struct Spot {
        double x, y, width, height;
    };
    // As the northern hemisphere sees them with north above.
    for (const auto& [x, y, width, height] : {Spot{-0.30, -0.34, 0.34, 0.26},
                                              {0.16, -0.30, 0.24, 0.20},
                                              {0.40, -0.08, 0.22, 0.22},
                                              {-0.44, 0.10, 0.24, 0.34},
                                              {0.54, -0.36, 0.10, 0.12},
                                              {-0.14, 0.36, 0.18, 0.13}}) {
        painter.setBrush(Tone{150, 158, 178}.colour(opacity));
        painter.drawEllipse(QPointF{x * radius, y * radius}, width * radius, height * radius);
    }
}

void paintMoon(QPainter& painter, const ViewScene& scene) {
    const auto& moon = scene.view.moon;
    if (moon.altitude < -2 || moon.lit < 0.012) return;
    const double dark = rise(4, -10, scene.view.sunAltitude);
    // By day it is a part of the sky's own blue, and close to the sun nothing of it is seen.
    const double apart = std::hypot(scene.moon.x() - scene.sun.x(), scene.moon.y() - scene.sun.y()) / scene.unit;
    const double glare = scene.view.sunAltitude > -6 ? rise(10, 34, apart) : 1;
    const double seen = (0.42 + 0.58 * dark) * glare * (0.05 + 0.95 * scene.light.direct);
    const double radius = scene.unit * (5.0 + 0.7 * rise(14, 2, moon.altitude));
    const Tone face = blend(blend(Tone{250, 250, 246}, Tone{250, 243, 222}, dark), {255, 206, 144},
                            0.75 * rise(11, 0, moon.altitude) * dark);
    painter.save();
    painter.translate(scene.moon);
    if (dark > 0.5 && moon.lit < 0.6) {
        // A young moon's dark part shines a little in the light of the earth.
        painter.setBrush(Tone{150, 164, 196}.colour(0.34 * (dark - 0.5) * (0.7 - moon.lit) * scene.light.direct));
        painter.drawEllipse(QPointF{0, 0}, radius, radius);
    }
    painter.rotate(-moon.brightLimb);
    const auto lit = litPart(radius, moon.lit);
    painter.setBrush(face.colour(seen));
    painter.drawPath(lit);
    painter.setClipPath(lit, Qt::IntersectClip);
    // The seas turn with the moon: north is a quarter turn from the bright limb, and which way tells waxing from
    // waning.
    painter.rotate(moon.isWaxing ? 90 : -90);
    paintSeas(painter, radius, 0.20 * seen * dark + 0.10 * seen);
    painter.restore();
}

} // namespace

void paintHeavens(QPainter& painter, const ViewScene& scene) {
    painter.setPen(Qt::NoPen);
    paintStars(painter, scene);
    paintMoon(painter, scene);
    paintSun(painter, scene);
}

} // namespace lumaro
