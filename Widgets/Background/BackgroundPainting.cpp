// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Background/BackgroundPainting.h"

#include "DesignSystem/Mask.h"
#include "DesignSystem/Tokens.h"
#include "LumaroCore/Support/EnumNames.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <algorithm>
#include <cmath>

namespace lumaro {
namespace {

// The light of a window in the room, thrown on the glass: four panes, leaning, and out of focus.
void paintThrownWindow(QPainter& painter, const QRectF& rect) {
    const double unit = std::min(rect.width(), rect.height());
    QPainterPath panes;
    for (const double x : {0.0, 0.27}) {
        for (const double y : {0.0, 0.36}) panes.addRect(x * unit, y * unit, 0.25 * unit, 0.335 * unit);
    }
    const QTransform lean{1, 0.06, -0.42, 1, rect.left() + rect.width() * 0.60, rect.top() - unit * 0.10};
    panes = lean.map(panes);
    const double blur = unit * 0.008;
    const QRectF area = panes.boundingRect().adjusted(-4 * blur, -4 * blur, 4 * blur, 4 * blur);
    constexpr double width = 240; // pixels: it is soft, and few are enough
    const double density = width / area.width();
    Mask mask = Mask::of(panes, area, density);
    mask.blur(std::max(1.5, blur * density));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(area, mask.tinted(faint(tint::light, 0.13)));
}

// Where the light enters the pane: a bright line, and a little of it scattered.
void paintGlassEdge(QPainter& painter, const QRectF& rect) {
    const double reach = 5 + std::min(rect.width(), rect.height()) * 0.004;
    for (const QPointF inward : {QPointF{0, reach}, QPointF{reach, 0}}) {
        QLinearGradient glow{rect.topLeft(), rect.topLeft() + inward};
        glow.setColorAt(0, faint(tint::light, InLight::isLamp() ? 0.22 : 0.42));
        glow.setColorAt(1, faint(tint::light, 0));
        painter.fillRect(rect, glow);
    }
    painter.fillRect(QRectF{rect.left(), rect.top(), rect.width(), 1.2},
                     faint(tint::light, InLight::isLamp() ? 0.35 : 0.7));
    painter.fillRect(QRectF{rect.left(), rect.top(), 1.2, rect.height()},
                     faint(tint::light, InLight::isLamp() ? 0.25 : 0.5));
}

// A lamp stands beyond the upper left: a pool of warm light on the wall, its halo, and a room that goes dark around it.
void paintLamplight(QPainter& painter, const QRectF& rect, const BackgroundTone& tone) {
    const double reach = std::hypot(rect.width(), rect.height());
    QLinearGradient room{rect.topLeft(), rect.bottomRight()};
    room.setColorAt(0, tone.base);
    room.setColorAt(0.55, mixed(tone.base, tone.deep, 0.55));
    room.setColorAt(1, tone.deep);
    painter.fillRect(rect, room);
    const QPointF lamp{rect.left() + rect.width() * 0.26, rect.top() + rect.height() * 0.10};
    QRadialGradient pool{lamp, reach * 0.74};
    // Light falls off with the square of the way, and the eye sees steps in it: many stops make none.
    constexpr int stops = 12;
    for (int i = 0; i <= stops; ++i) {
        const double way = static_cast<double>(i) / stops;
        const double fall = std::pow(1 - way, 2) * (1 - 0.35 * way);
        pool.setColorAt(way, faint(tone.light, fall));
    }
    painter.fillRect(rect, pool);
    QRadialGradient dusk{lamp, reach * 1.02};
    dusk.setColorAt(0.45, faint({14, 9, 7}, 0));
    dusk.setColorAt(1, faint({14, 9, 7}, 0.42));
    painter.fillRect(rect, dusk);
}

} // namespace

void paintBackground(QPainter& painter, QSizeF size, const QString& background, Appearance appearance) {
    const QRectF rect{{0, 0}, size};
    const InLight painted{appearance};
    const auto tone = toneOf(fromName<BackgroundID>(background.toStdString()).value_or(BackgroundID::butter),
                             appearance == Appearance::dark);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath whole;
    whole.addRect(rect);
    if (appearance == Appearance::dark) {
        paintLamplight(painter, rect, tone);
        paintGrain(painter, whole, 0.4);
        return paintGlassEdge(painter, rect);
    }
    QLinearGradient light{0, 0, size.width() * 0.18, size.height()};
    light.setColorAt(0, mixed(tone.base, tone.light, 0.55));
    light.setColorAt(0.45, tone.base);
    light.setColorAt(1, mixed(tone.base, tone.deep, 0.62));
    painter.fillRect(rect, light);
    QRadialGradient fall{rect.topLeft(), std::hypot(size.width(), size.height()) * 0.72};
    fall.setColorAt(0, faint(tone.light, 0.95));
    fall.setColorAt(0.45, faint(tone.light, 0.30));
    fall.setColorAt(1, faint(tone.light, 0));
    painter.fillRect(rect, fall);
    paintGrain(painter, whole, 0.75);
    paintThrownWindow(painter, rect);
    paintGlassEdge(painter, rect);
}

} // namespace lumaro
