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
        glow.setColorAt(0, faint(tint::light, 0.42));
        glow.setColorAt(1, faint(tint::light, 0));
        painter.fillRect(rect, glow);
    }
    painter.fillRect(QRectF{rect.left(), rect.top(), rect.width(), 1.2}, faint(tint::light, 0.7));
    painter.fillRect(QRectF{rect.left(), rect.top(), 1.2, rect.height()}, faint(tint::light, 0.5));
}

// The paper's own colour without most of its light: its hue stays.
QColor dimmed(const QColor& tone, double light) {
    const QColor warm = mixed(tone, {226, 196, 172}, 0.22);
    return QColor::fromRgbF(static_cast<float>(warm.redF() * light), static_cast<float>(warm.greenF() * light),
                            static_cast<float>(warm.blueF() * light));
}

} // namespace

void paintBackground(QPainter& painter, QSizeF size, const QString& background, Appearance appearance) {
    const QRectF rect{{0, 0}, size};
    const auto tone = toneOf(fromName<BackgroundID>(background.toStdString()).value_or(BackgroundID::butter));
    painter.setRenderHint(QPainter::Antialiasing);
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
    QPainterPath whole;
    whole.addRect(rect);
    paintGrain(painter, whole, 0.75);
    paintThrownWindow(painter, rect);
    paintGlassEdge(painter, rect);
    if (appearance == Appearance::dark) {
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        QLinearGradient dusk{rect.topLeft(), rect.bottomRight()};
        dusk.setColorAt(0, dimmed(tone.deep, 0.58));
        dusk.setColorAt(1, dimmed(tone.deep, 0.38));
        painter.fillRect(rect, dusk);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
}

} // namespace lumaro
