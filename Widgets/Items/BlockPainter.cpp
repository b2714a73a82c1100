// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Words.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>

#include <algorithm>

namespace lumaro {
namespace {

constexpr double calm = 40; // the lower part, which controls lie over
constexpr QPointF ringMiddle{58, 58};
constexpr double ringRadius = 36;

struct Mood {
    QColor colour;
    QColor ink;
};

Mood moodOf(const BlockFace& face) {
    if (face.face == Pomodoro::Face::rung) return {tint::sun, tint::sunInk};
    if (face.isCoolDown) return {tint::mint, tint::mintInk};
    return {tint::coral, tint::coralInk};
}

void paintRing(QPainter& painter, const BlockFace& face, const Mood& mood) {
    const QRectF ring = QRectF{-ringRadius, -ringRadius, 2 * ringRadius, 2 * ringRadius}.translated(ringMiddle);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{lit({240, 224, 198}, 0.70), 10});
    painter.drawEllipse(ring);
    painter.setPen(QPen{faint(tint::umber, 0.10), 1});
    painter.drawArc(ring.adjusted(-4.5, -4.5, 4.5, 4.5), 30 * 16, 200 * 16);
    const bool isRung = face.face == Pomodoro::Face::rung;
    const double progress = isRung ? 1 : std::clamp(face.progress, 0.0, 1.0);
    if (face.face == Pomodoro::Face::resting || progress <= 0) return;
    const auto span = static_cast<int>(-360 * 16 * progress);
    painter.setPen(QPen{faint(tint::umber, 0.20), 10, Qt::SolidLine, Qt::RoundCap});
    painter.drawArc(ring.translated(0.7, 1.5), 90 * 16, span);
    QLinearGradient glow{ring.topLeft(), ring.bottomRight()};
    glow.setColorAt(0, mixed(mood.colour, tint::light, 0.22));
    glow.setColorAt(1, mixed(mood.colour, mood.ink, 0.18));
    painter.setPen(QPen{QBrush{glow}, 10, Qt::SolidLine, Qt::RoundCap});
    painter.drawArc(ring, 90 * 16, span);
}

void paintTomato(QPainter& painter) {
    QRadialGradient skin{ringMiddle + QPointF{-5, -4}, 24};
    skin.setColorAt(0, {246, 158, 132});
    skin.setColorAt(0.5, {226, 106, 82});
    skin.setColorAt(1, {180, 70, 52});
    painter.setPen(Qt::NoPen);
    painter.setBrush(skin);
    painter.drawEllipse(ringMiddle + QPointF{0, 3}, 16.5, 14.5);
    painter.setBrush(QColor{104, 148, 104});
    for (const double degrees : {-75.0, -38.0, 0.0, 38.0, 75.0}) {
        painter.save();
        painter.translate(ringMiddle + QPointF{0, -9.5});
        painter.rotate(degrees + 180);
        QPainterPath leaf{{0, 0}};
        leaf.quadTo({-3.2, -4.5}, {0, -9.5});
        leaf.quadTo({3.2, -4.5}, {0, 0});
        painter.fillPath(leaf, QColor{96, 142, 98});
        painter.restore();
    }
    painter.setPen(QPen{QColor{88, 128, 88}, 2.2, Qt::SolidLine, Qt::RoundCap});
    painter.drawLine(ringMiddle + QPointF{0, -9}, ringMiddle + QPointF{1.6, -14.5});
    painter.setPen(Qt::NoPen);
    painter.setBrush(faint(tint::light, 0.5));
    painter.drawEllipse(ringMiddle + QPointF{-7, 0}, 3.4, 2.4);
}

void paintCup(QPainter& painter) {
    const QPointF foot = ringMiddle + QPointF{-2, 14};
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{QColor{86, 150, 126}, 3});
    painter.drawEllipse(foot + QPointF{13.5, -11}, 5, 5);
    QPainterPath cup;
    cup.moveTo(foot + QPointF{-13, -20});
    cup.lineTo(foot + QPointF{13, -20});
    cup.cubicTo(foot + QPointF{13, -4}, foot + QPointF{8, 0}, foot + QPointF{4, 0});
    cup.lineTo(foot + QPointF{-4, 0});
    cup.cubicTo(foot + QPointF{-8, 0}, foot + QPointF{-13, -4}, foot + QPointF{-13, -20});
    QLinearGradient glaze{foot.x() - 13, 0, foot.x() + 13, 0};
    glaze.setColorAt(0, {160, 212, 188});
    glaze.setColorAt(1, {84, 148, 124});
    painter.fillPath(cup, glaze);
    painter.setPen(QPen{faint(tint::mintInk, 0.5), 2, Qt::SolidLine, Qt::RoundCap});
    for (const double x : {-5.0, 4.0}) {
        QPainterPath steam{foot + QPointF{x, -24}};
        steam.cubicTo(foot + QPointF{x - 4, -28}, foot + QPointF{x + 4, -31}, foot + QPointF{x, -35});
        painter.drawPath(steam);
    }
}

void paintBell(QPainter& painter) {
    const QPointF top = ringMiddle + QPointF{0, -17};
    painter.save();
    painter.translate(top);
    painter.rotate(9);
    QPainterPath bell{{-15, 25}};
    bell.cubicTo({-9, 20}, {-13, 4}, {0, 3});
    bell.cubicTo({13, 4}, {9, 20}, {15, 25});
    bell.closeSubpath();
    QLinearGradient brass{-14, 0, 14, 0};
    brass.setColorAt(0, {252, 224, 148});
    brass.setColorAt(0.45, {236, 182, 78});
    brass.setColorAt(1, {190, 132, 44});
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor{176, 118, 40});
    painter.drawEllipse(QPointF{0, 27}, 4.2, 4.2);
    painter.drawEllipse(QPointF{0, 2}, 2.6, 2.6);
    painter.fillPath(bell, brass);
    painter.restore();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{QColor{190, 132, 44}, 2, Qt::SolidLine, Qt::RoundCap});
    painter.drawArc(QRectF{ringMiddle.x() - 24, ringMiddle.y() - 14, 48, 28}, 155 * 16, 40 * 16);
    painter.drawArc(QRectF{ringMiddle.x() - 24, ringMiddle.y() - 14, 48, 28}, -15 * 16, 40 * 16);
}

QString stateWords(const BlockFace& face) {
    if (face.face == Pomodoro::Face::rung) return Words::tr("time's up");
    if (face.isCoolDown) return Words::tr("cooling down");
    return face.face == Pomodoro::Face::running ? Words::tr("focus") : Words::tr("at rest");
}

} // namespace

void paintFace(QPainter& painter, const BlockFace& face, QSizeF size) {
    QPainterPath card;
    card.addRoundedRect(QRectF{{0, 0}, size}, 13, 13);
    paintShadow(painter, card);
    paintPaper(painter, card, cardPaper());
    const auto mood = moodOf(face);
    paintRing(painter, face, mood);
    if (face.face == Pomodoro::Face::rung)
        paintBell(painter);
    else if (face.isCoolDown)
        paintCup(painter);
    else
        paintTomato(painter);

    const QRectF right{112, 18, size.width() - 112 - 14, size.height() - calm - 26};
    painter.setPen(tint::ink);
    QFont font = sans(42, QFont::ExtraBold);
    while (font.pixelSize() > 20 && figuresWidth(face.figure, font) > right.width())
        font.setPixelSize(font.pixelSize() - 1);
    drawFigures(painter, {right.left(), right.top() + 42}, face.figure, font);
    painter.setPen(mood.ink);
    const auto words = stateWords(face);
    drawLines(painter, {right.left() + 1, right.top() + 48, right.width(), 34}, Qt::AlignVCenter | Qt::AlignLeft, words,
              fitted(hand(25, QFont::Bold), words, right.width() * 1.2, 21), 2);
    const QRectF foot{18, size.height() - calm - 1, size.width() - 36, calm - 8};
    painter.setPen(tint::softInk);
    drawLine(painter, foot, Qt::AlignCenter, face.who, fitted(hand(25), face.who, foot.width(), 18));
    paintTape(painter, {size.width() / 2, 0}, {70, 23}, -1.5, {240, 196, 150});
}

} // namespace lumaro
