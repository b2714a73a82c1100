// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Shadow.h"
#include "Widgets/Items/Window/ViewPainting.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace lumaro {
namespace {

constexpr double cardMargin = 16;
constexpr double gap = 74; // between the two sides, where the hours stand

void paintStrip(QPainter& painter, const QRectF& rect, const ClocksFace::Side& side) {
    painter.save();
    QPainterPath strip;
    strip.addRoundedRect(rect, 9, 9);
    painter.setClipPath(strip, Qt::IntersectClip);
    if (side.view) {
        paintView(painter, rect, *side.view);
    } else {
        QLinearGradient paper{rect.topLeft(), rect.bottomRight()};
        paper.setColorAt(0, lit({238, 226, 204}, 0.72));
        paper.setColorAt(1, lit({224, 208, 180}, 0.72));
        painter.fillRect(rect, paper);
        painter.setPen(tint::ink);
        drawLines(painter, rect.adjusted(8, 0, -8, 0), Qt::AlignCenter, side.words, hand(22), 2);
    }
    painter.restore();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{faint(tint::umber, 0.16), 1});
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), 8.5, 8.5);
    painter.setPen(QPen{faint(tint::light, 0.85), 1});
    painter.drawLine(QPointF{rect.left() + 9, rect.bottom() + 1}, QPointF{rect.right() - 9, rect.bottom() + 1});
}

void paintSide(QPainter& painter, const QRectF& rect, const ClocksFace::Side& side) {
    paintStrip(painter, {rect.left(), rect.top(), rect.width(), 76}, side);
    painter.setPen(tint::ink);
    QFont font = sans(38, QFont::ExtraBold);
    while (font.pixelSize() > 20 && figuresWidth(side.time, font) > rect.width())
        font.setPixelSize(font.pixelSize() - 1);
    const double width = figuresWidth(side.time, font);
    drawFigures(painter, {rect.center().x() - width / 2, rect.top() + 114}, side.time, font);
    painter.setPen(tint::softInk);
    const QString words =
        side.view && !side.words.isEmpty() ? side.name + QStringLiteral(" · ") + side.words : side.name;
    const QRectF name{rect.left(), rect.top() + 119, rect.width(), 32};
    drawLine(painter, name, Qt::AlignCenter, words, fitted(hand(25), words, name.width(), 18));
}

// A thread from one home to the other, with the hours on it.
void paintBetween(QPainter& painter, QPointF middle, const ClocksFace& face) {
    QPen thread{tint::coral, 1.8, Qt::CustomDashLine, Qt::RoundCap};
    thread.setDashPattern({0.01, 3.2});
    painter.setPen(thread);
    painter.setBrush(Qt::NoBrush);
    QPainterPath arc{middle + QPointF{-gap / 2 + 6, -12}};
    arc.quadTo(middle + QPointF{0, -34}, middle + QPointF{gap / 2 - 6, -12});
    painter.drawPath(arc);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint::coral);
    painter.drawEllipse(arc.pointAtPercent(0), 3, 3);
    painter.drawEllipse(arc.pointAtPercent(1), 3, 3);
    painter.setPen(tint::coralInk);
    drawLines(painter, {middle.x() - gap / 2 + 2, middle.y() - 10, gap - 4, 62}, Qt::AlignHCenter | Qt::AlignTop,
              face.between, hand(21, QFont::Bold), 3);
    painter.setPen(tint::softInk);
    const QRectF day{middle.x() - gap / 2, middle.y() + 60, gap, 24};
    drawLine(painter, day, Qt::AlignCenter, face.day, fitted(hand(22), face.day, day.width(), 16));
}

} // namespace

void paintFace(QPainter& painter, const ClocksFace& face, QSizeF size) {
    QPainterPath card;
    card.addRoundedRect(QRectF{{0, 0}, size}, 12, 12);
    paintShadow(painter, card);
    paintPaper(painter, card, cardPaper());
    const double width = (size.width() - 2 * cardMargin - gap) / 2;
    const double height = size.height() - 2 * cardMargin;
    paintSide(painter, {cardMargin, cardMargin, width, height}, face.mine);
    paintSide(painter, {size.width() - cardMargin - width, cardMargin, width, height}, face.theirs);
    paintBetween(painter, {size.width() / 2, cardMargin + 56}, face);
    paintTape(painter, {size.width() / 2, 0}, {78, 24}, 1.8, {170, 204, 184});
}

} // namespace lumaro
