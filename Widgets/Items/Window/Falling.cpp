// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Window/Chance.h"
#include "Widgets/Items/Window/ViewPainting.h"
#include "Widgets/Items/Window/ViewScene.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <algorithm>
#include <array>
#include <cmath>

namespace lumaro {
namespace {

constexpr std::uint64_t ofDrops = 53;
constexpr double rainKmh = 30; // how fast drops fall
constexpr double snowKmh = 14; // and flakes, as the eye takes it in a wind

bool isSnow(const SkyView& view) {
    return view.sky == Sky::snow;
}

/// How bright drops are against what is behind them.
Tone dropTone(const ViewScene& scene) {
    return blend(blend(scene.light.horizon, scene.light.middle, 0.4), {250, 250, 252},
                 0.46 + 0.04 * rise(-8, 4, scene.view.sunAltitude));
}

void paintStreaks(QPainter& painter, const ViewScene& scene, QSizeF area, bool wraps) {
    Chance chance{scene.view.scenery.seed, ofDrops};
    const double slant = scene.slant(rainKmh);
    const int count = static_cast<int>((70 + 150 * scene.view.fall) * area.width() / area.height() / 1.45);
    const Tone tone = dropTone(scene);
    for (int i = 0; i < count; ++i) {
        const double near = std::pow(chance.part(), 1.6);
        const double length = scene.unit * (3.0 + 7.5 * near) * (0.7 + 0.5 * scene.view.fall);
        const QPointF at{area.width() * chance.part(), area.height() * chance.part()};
        const QPointF way{length * slant, length};
        painter.setPen(QPen{tone.colour((0.16 + 0.34 * near) * (0.65 + 0.35 * scene.view.fall)),
                            scene.unit * (0.22 + 0.34 * near), Qt::SolidLine, Qt::RoundCap});
        painter.drawLine(at, at + way);
        if (!wraps) continue;
        for (const double dx : {-area.width(), 0.0, area.width()}) {
            for (const double dy : {-area.height(), 0.0}) {
                if (dx == 0 && dy == 0) continue;
                painter.drawLine(at + QPointF{dx, dy}, at + way + QPointF{dx, dy});
            }
        }
    }
}

void paintFlakes(QPainter& painter, const ViewScene& scene, QSizeF area, bool wraps) {
    Chance chance{scene.view.scenery.seed, ofDrops};
    painter.setPen(Qt::NoPen);
    const int count = static_cast<int>((70 + 150 * scene.view.fall) * area.width() / area.height() / 1.45);
    const Tone tone = blend(scene.light.cloudLit, {255, 253, 248}, 0.55);
    for (int i = 0; i < count; ++i) {
        const double near = std::pow(chance.part(), 2.4);
        const double radius = scene.unit * (0.34 + 1.15 * near);
        const QPointF at{area.width() * chance.part(), area.height() * chance.part()};
        painter.setBrush(tone.colour(0.5 + 0.4 * near));
        const auto flake = [&](QPointF off) {
            if (near > 0.5) {
                painter.setOpacity(0.35);
                painter.drawEllipse(at + off, radius * 1.45, radius * 1.45);
                painter.setOpacity(1);
            }
            painter.drawEllipse(at + off, radius, radius * 0.95);
        };
        flake({0, 0});
        if (!wraps) continue;
        for (const double dx : {-area.width(), 0.0, area.width()}) {
            for (const double dy : {-area.height(), 0.0, area.height()}) {
                if (dx != 0 || dy != 0) flake({dx, dy});
            }
        }
    }
}

/// A bolt far away, and the light of it in the clouds.
void paintBolt(QPainter& painter, const ViewScene& scene) {
    Chance chance{scene.view.scenery.seed, ofDrops + 1};
    const double left = chance.happens(0.5) ? 0.24 : 0.70;
    QPointF at{scene.rect.left() + scene.rect.width() * (left + chance.between(-0.04, 0.04)),
               scene.rect.top() + scene.rect.height() * 0.16};
    painter.setPen(Qt::NoPen);
    QRadialGradient glow{at, scene.rect.height() * 0.55};
    glow.setColorAt(0, QColor{236, 224, 255, 118});
    glow.setColorAt(0.45, QColor{206, 196, 246, 40});
    glow.setColorAt(1, QColor{200, 190, 240, 0});
    painter.setBrush(glow);
    painter.drawEllipse(at, scene.rect.height() * 0.55, scene.rect.height() * 0.55);
    QPainterPath bolt{at};
    QPainterPath branch;
    const int steps = 9;
    for (int i = 0; i < steps; ++i) {
        at += QPointF{scene.unit * chance.between(-4.2, 4.6),
                      (scene.horizon - scene.rect.top() - scene.rect.height() * 0.16) / steps};
        bolt.lineTo(at);
        if (i == 3) {
            branch.moveTo(at);
            branch.lineTo(at + QPointF{scene.unit * 6, scene.unit * 7});
            branch.lineTo(at + QPointF{scene.unit * 8, scene.unit * 15});
        }
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{QColor{226, 214, 255, 70}, scene.unit * 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.drawPath(bolt);
    painter.setPen(QPen{QColor{255, 250, 240, 235}, scene.unit * 0.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.drawPath(bolt);
    painter.setPen(QPen{QColor{255, 250, 240, 150}, scene.unit * 0.35, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.drawPath(branch);
}

} // namespace

bool falls(const SkyView& view) {
    return view.fall > 0;
}

void paintFall(QPainter& painter, const ViewScene& scene) {
    if (!scene.view.isStill) return;
    painter.save();
    painter.translate(scene.rect.topLeft());
    if (isSnow(scene.view))
        paintFlakes(painter, scene, scene.rect.size(), false);
    else if (falls(scene.view))
        paintStreaks(painter, scene, scene.rect.size(), false);
    painter.restore();
}

void paintLightning(QPainter& painter, const ViewScene& scene) {
    if (scene.view.sky == Sky::storm && scene.view.isStill) paintBolt(painter, scene);
}

FallingTile fallingTile(const SkyView& view) {
    const ViewScene scene{view, {0, 0, 100, 100}, 1};
    const double down = isSnow(view) ? 0.16 : 1.25;
    return {down * scene.slant(isSnow(view) ? snowKmh : rainKmh), down};
}

QImage paintedTile(const SkyView& view, QSize pixels, double density) {
    QImage tile{pixels, QImage::Format_ARGB32_Premultiplied};
    tile.fill(Qt::transparent);
    QPainter painter{&tile};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    const QSizeF area = QSizeF{pixels} / density;
    const ViewScene scene{view, {{0, 0}, area}, density};
    if (isSnow(view))
        paintFlakes(painter, scene, area, true);
    else if (falls(view))
        paintStreaks(painter, scene, area, true);
    return tile;
}

} // namespace lumaro
