// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <array>
#include <cmath>

namespace lumaro {
namespace {

constexpr double stub = 112; // where the figure stands, up to the perforation
constexpr double notch = 7;

// A ticket: round corners, and a notch above and below where it would be torn off.
QPainterPath ticketOutline(QSizeF size) {
    QPainterPath ticket;
    ticket.addRoundedRect(QRectF{{0, 0}, size}, 15, 15);
    QPainterPath notches;
    notches.addEllipse(QPointF{stub, -1}, notch, notch);
    notches.addEllipse(QPointF{stub, size.height() + 1}, notch, notch);
    return ticket.subtracted(notches);
}

void paintStub(QPainter& painter, const QPainterPath& ticket, QSizeF size, bool isThere) {
    QPainterPath left;
    left.addRect(0, 0, stub, size.height());
    QLinearGradient warmth{0, 0, stub, size.height()};
    const QColor colour = isThere ? tint::sun : tint::coral;
    warmth.setColorAt(0, mixed(colour, tint::light, 0.30));
    warmth.setColorAt(1, mixed(colour, tint::coralInk, isThere ? 0.06 : 0.12));
    painter.fillPath(ticket.intersected(left), warmth);
    QPen holes{faint(tint::umber, 0.30), 1.8, Qt::CustomDashLine, Qt::RoundCap};
    holes.setDashPattern({0.01, 3});
    painter.setPen(holes);
    painter.drawLine(QPointF{stub, notch + 5}, QPointF{stub, size.height() - notch - 4});
}

void paintFigure(QPainter& painter, const CountdownFace& face, QSizeF size) {
    const double middle = stub / 2 - 1;
    QFont font = sans(46, QFont::ExtraBold);
    while (font.pixelSize() > 18 && figuresWidth(face.figure, font) > stub - 20)
        font.setPixelSize(font.pixelSize() - 1);
    const double rise = face.unit.isEmpty() ? 0 : 8;
    const double baseline = size.height() / 2 - rise + QFontMetricsF{font}.capHeight() / 2;
    const QColor ink = lit(face.isThere ? QColor{92, 56, 22} : QColor{92, 32, 22}, 0.75);
    const QPointF start{middle - figuresWidth(face.figure, font) / 2, baseline};
    painter.setPen(faint(tint::light, 0.35));
    drawFigures(painter, start + QPointF{0.8, 1.2}, face.figure, font);
    painter.setPen(ink);
    drawFigures(painter, start, face.figure, font);
    drawLine(painter, {6, size.height() - 29, stub - 14, 18}, Qt::AlignCenter, face.unit, sans(14, QFont::DemiBold));
}

// What a moment ago was thrown into the air.
void paintConfetti(QPainter& painter, QSizeF size) {
    const std::array<QColor, 5> colours{tint::coral, tint::mint, tint::sun, tint::sky, tint::plum};
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 44; ++i) {
        const double along = std::fmod(i * 0.618034, 1.0);
        const double height = std::fmod(i * 0.754878, 1.0);
        const bool isAbove = i % 3 != 2;
        const double y = isAbove ? -26 + height * 34 : size.height() - 6 + height * 26;
        painter.save();
        painter.translate(-20 + along * (size.width() + 40), y);
        painter.rotate(i * 47);
        painter.setBrush(faint(tint::umber, 0.16));
        painter.drawRoundedRect(QRectF{-3.8, -1, 10, 5.2}, 1.2, 1.2);
        painter.setBrush(colours[static_cast<std::size_t>(i) % colours.size()]);
        if (i % 4 == 3)
            painter.drawEllipse(QPointF{0, 0}, 3.6, 3.6);
        else
            painter.drawRoundedRect(QRectF{-5, -2.6, 10, 5.2}, 1.2, 1.2);
        painter.restore();
    }
}

} // namespace

void paintFace(QPainter& painter, const CountdownFace& face, QSizeF size) {
    const auto ticket = ticketOutline(size);
    paintShadow(painter, ticket);
    paintPaper(painter, ticket, cardPaper());
    paintStub(painter, ticket, size, face.isThere);
    paintGrain(painter, ticket, 0.7);
    paintEdge(painter, ticket, 0.8);
    paintFigure(painter, face, size);
    const QRectF label{stub + 18, 8, size.width() - stub - 34, size.height() - 16};
    painter.setPen(tint::ink);
    const QFont large = hand(33, QFont::Bold);
    if (QFontMetricsF{large}.horizontalAdvance(face.label) <= label.width()) {
        drawLine(painter, label, Qt::AlignVCenter | Qt::AlignLeft, face.label, large);
    } else {
        drawLines(painter, label, Qt::AlignVCenter | Qt::AlignLeft, face.label, hand(28, QFont::Bold), 2);
    }
    if (face.isCelebrated) paintConfetti(painter, size);
}

} // namespace lumaro
