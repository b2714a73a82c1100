// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/NoteLook.h"
#include "Widgets/Items/NoteLooks.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <cmath>
#include <optional>

namespace lumaro {
namespace {

QColor pinColour(const QString& name) {
    if (name == u"coral") return tint::coral;
    if (name == u"mint") return tint::mint;
    if (name == u"ink") return {84, 68, 76};
    if (name == u"pearl") return lit({238, 228, 214}, 0.2);
    if (name == u"plum") return lit({146, 92, 150}, 0.1);
    return tint::brass;
}

void paintPin(QPainter& painter, QPointF middle, const QColor& colour) {
    const QColor glint{255, 251, 240};
    const QColor dark{74, 46, 26};
    QPainterPath base;
    base.addEllipse(middle + QPointF{1.4, 2}, 8.4, 8.2);
    paintShadow(painter, base, 0.75);
    QRadialGradient skirt{middle + QPointF{-2, -2}, 13};
    skirt.setColorAt(0, colour.lighter(112));
    skirt.setColorAt(1, mixed(colour, dark, 0.45));
    painter.setPen(Qt::NoPen);
    painter.setBrush(skirt);
    painter.drawEllipse(middle + QPointF{0.6, 0.9}, 9.6, 9.5);
    QRadialGradient head{middle + QPointF{-3.2, -3.8}, 11};
    head.setColorAt(0, mixed(colour, glint, 0.82));
    head.setColorAt(0.32, mixed(colour, glint, 0.24));
    head.setColorAt(0.75, colour);
    head.setColorAt(1, mixed(colour, dark, 0.28));
    painter.setBrush(head);
    painter.drawEllipse(middle + QPointF{-0.7, -0.9}, 7.2, 7.1);
    painter.setBrush(faint(glint, 0.8));
    painter.drawEllipse(middle + QPointF{-3.3, -3.9}, 1.7, 1.2);
}

void paintHeartPin(QPainter& painter, QPointF middle) {
    QPainterPath heart{{0, 10}};
    heart.cubicTo({-15, -1.5}, {-9.5, -12.5}, {0, -5});
    heart.cubicTo({9.5, -12.5}, {15, -1.5}, {0, 10});
    heart.translate(middle);
    paintShadow(painter, heart.translated(0.8, 1.2), 0.75);
    const QColor red = lit({206, 70, 66}, 0.08);
    QRadialGradient enamel{middle + QPointF{-4, -5}, 18};
    enamel.setColorAt(0, mixed(red, {255, 251, 240}, 0.55));
    enamel.setColorAt(0.4, red);
    enamel.setColorAt(1, mixed(red, {74, 20, 26}, 0.42));
    painter.fillPath(heart, enamel);
    painter.strokePath(heart, QPen{mixed(tint::brass, {255, 251, 240}, 0.3), 1.1});
}

struct Tape {
    QColor colour;
    TapePattern pattern;
};

void stripe(QPainter& painter, QSizeF strip, const QColor& colour, double width, double step) {
    painter.setPen(QPen{colour, width});
    for (double x = -strip.width(); x < strip.width(); x += step) {
        painter.drawLine(QPointF{x, strip.height() / 2}, QPointF{x + strip.height(), -strip.height() / 2});
    }
}

void dot(QPainter& painter, QSizeF strip, const QColor& colour) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    int row = 0;
    for (double y = -strip.height() / 2 + 4; y < strip.height() / 2; y += 6.4, ++row) {
        for (double x = -strip.width() / 2 + (row % 2 == 0 ? 3.0 : 8.0); x < strip.width() / 2; x += 10) {
            painter.drawEllipse(QPointF{x, y}, 1.9, 1.9);
        }
    }
}

void check(QPainter& painter, QSizeF strip, const QColor& colour) {
    constexpr double side = 6.5;
    for (double x = -strip.width() / 2; x < strip.width() / 2; x += 2 * side) {
        painter.fillRect(QRectF{x, -strip.height() / 2, side, strip.height()}, faint(colour, 0.5));
    }
    for (double y = -strip.height() / 2; y < strip.height() / 2; y += 2 * side) {
        painter.fillRect(QRectF{-strip.width() / 2, y, strip.width(), side}, faint(colour, 0.5));
    }
}

void wave(QPainter& painter, QSizeF strip, const QColor& colour) {
    painter.setPen(QPen{colour, 1.5});
    painter.setBrush(Qt::NoBrush);
    for (double y = -strip.height() / 2 + 3; y < strip.height() / 2 + 3; y += 6) {
        QPainterPath line{{-strip.width() / 2, y}};
        for (double x = -strip.width() / 2; x < strip.width() / 2; x += 12) {
            line.quadTo({x + 3, y - 4.5}, {x + 6, y});
            line.quadTo({x + 9, y + 4.5}, {x + 12, y});
        }
        painter.drawPath(line);
    }
}

std::optional<Tape> tapeNamed(const QString& name) {
    const auto printed = [](QColor colour, double part) { return lit(colour, part); };
    if (name == u"tapeStripes") {
        return Tape{{250, 232, 214}, [=](QPainter& painter, QSizeF strip) {
                        stripe(painter, strip, printed({222, 104, 84}, 0.2), 3.4, 9);
                    }};
    }
    if (name == u"tapeDots") {
        return Tape{{116, 176, 150},
                    [=](QPainter& painter, QSizeF strip) { dot(painter, strip, printed({255, 250, 236}, 0.2)); }};
    }
    if (name == u"tapeChecks") {
        return Tape{{232, 240, 244},
                    [=](QPainter& painter, QSizeF strip) { check(painter, strip, printed({82, 134, 176}, 0.2)); }};
    }
    if (name == u"tapeWaves") {
        return Tape{{238, 196, 104},
                    [=](QPainter& painter, QSizeF strip) { wave(painter, strip, printed({255, 250, 236}, 0.2)); }};
    }
    if (name == u"tapeKraft") {
        return Tape{{190, 152, 106}, [=](QPainter& painter, QSizeF strip) {
                        stripe(painter, strip, faint(printed({120, 84, 48}, 0.2), 0.18), 1, 4);
                    }};
    }
    return std::nullopt;
}

} // namespace

void paintHolder(QPainter& painter, QSizeF size, const QString& name, const PaperColours& paper) {
    const QPointF tapeMiddle{size.width() / 2, 2};
    constexpr QSizeF strip{92, 26};
    constexpr double lean = -2.2;
    if (name == u"tape") return paintTape(painter, tapeMiddle, strip, lean, paper.tape);
    if (const auto tape = tapeNamed(name)) {
        return paintTape(painter, tapeMiddle, strip, lean, tape->colour, tape->pattern);
    }
    const QPointF pinMiddle{size.width() / 2, 13};
    if (name == u"heart") return paintHeartPin(painter, pinMiddle);
    paintPin(painter, pinMiddle, pinColour(name));
}

} // namespace lumaro
