// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Lettering.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"
#include "Widgets/Items/Paper.h"
#include "Widgets/Items/Picture.h"
#include "Widgets/Items/Shadow.h"

#include <QtGui/QConicalGradient>
#include <QtGui/QFontMetricsF>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QRadialGradient>
#include <QtGui/QTransform>

#include <algorithm>
#include <array>
#include <cmath>

namespace lumaro {
namespace {

// Of the disc's radius.
constexpr double labelPart = 0.40;
constexpr double firstGroove = 0.93;
constexpr double lastGroove = 0.50;

QPainterPath disc(QPointF middle, double radius) {
    QPainterPath path;
    path.addEllipse(middle, radius, radius);
    return path;
}

QPainterPath grooves(QPointF middle, double radius) {
    return disc(middle, radius).subtracted(disc(middle, radius * labelPart));
}

void paintVinyl(QPainter& painter, QPointF middle, double radius) {
    QRadialGradient body{middle, radius};
    body.setColorAt(0, {58, 48, 46});
    body.setColorAt(0.94, {44, 36, 36});
    body.setColorAt(0.97, {68, 56, 52});
    body.setColorAt(1, {38, 31, 31});
    painter.fillPath(disc(middle, radius), body);
    painter.setBrush(Qt::NoBrush);
    int ring = 0;
    for (double r = radius * 0.94; r > radius * (labelPart + 0.05); r -= 1.7, ++ring) {
        const bool isGap = ring % 11 == 10;
        painter.setPen(
            QPen{isGap ? QColor{26, 21, 22, 190} : QColor{255, 236, 214, ring % 2 == 0 ? 20 : 9}, isGap ? 1.6 : 0.8});
        painter.drawEllipse(middle, r, r);
    }
}

// A label of paper where there is no cover: enough on it to see it turn.
void paintPlainLabel(QPainter& painter, QPointF middle, double radius) {
    QPainterPath label = disc(middle, radius);
    painter.fillPath(label, QColor{226, 112, 88});
    painter.save();
    painter.setClipPath(label, Qt::IntersectClip);
    painter.fillRect(QRectF{middle.x() - radius, middle.y() + radius * 0.24, 2 * radius, radius},
                     QColor{244, 196, 118});
    painter.setPen(QPen{QColor{255, 246, 228}, radius * 0.05});
    painter.drawLine(middle + QPointF{-radius, radius * 0.24}, middle + QPointF{radius, radius * 0.24});
    painter.restore();
    painter.setPen(QPen{QColor{255, 246, 228, 190}, radius * 0.04});
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(middle, radius * 0.86, radius * 0.86);
    paintGrain(painter, label);
}

void paintLabel(QPainter& painter, QPointF middle, double radius, const QImage& cover) {
    if (cover.isNull()) {
        paintPlainLabel(painter, middle, radius);
    } else {
        painter.save();
        painter.setClipPath(disc(middle, radius), Qt::IntersectClip);
        paintPicture(painter, QRectF{middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius}, cover);
        painter.restore();
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen{QColor{30, 24, 24, 120}, 1.4});
    painter.drawEllipse(middle, radius, radius);
    painter.setPen(QPen{faint(tint::light, 0.5), 1});
    painter.setBrush(QColor{245, 234, 214});
    painter.drawEllipse(middle, 3.6, 3.6);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor{78, 58, 44});
    painter.drawEllipse(middle, 2.2, 2.2);
}

void paintDisc(QPainter& painter, QPointF middle, double radius, const QImage& cover) {
    paintVinyl(painter, middle, radius);
    paintLabel(painter, middle, radius * labelPart, cover);
}

// The light from the top left lies across the grooves, and a little on the other side.
void paintSheen(QPainter& painter, QPointF middle, double radius) {
    QConicalGradient sheen{middle, 135};
    const auto light = [](double opacity) { return faint({255, 240, 216}, opacity); };
    sheen.setColorAt(0, light(0.30));
    sheen.setColorAt(0.05, light(0.17));
    sheen.setColorAt(0.13, light(0));
    sheen.setColorAt(0.40, light(0));
    sheen.setColorAt(0.47, light(0.10));
    sheen.setColorAt(0.5, light(0.17));
    sheen.setColorAt(0.53, light(0.10));
    sheen.setColorAt(0.60, light(0));
    sheen.setColorAt(0.87, light(0));
    sheen.setColorAt(0.95, light(0.17));
    sheen.setColorAt(1, light(0.30));
    painter.fillPath(grooves(middle, radius), sheen);
    paintEdge(painter, disc(middle, radius), 0.34);
    QRadialGradient onLabel{middle - QPointF{radius, radius} * 0.2, radius * 0.55};
    onLabel.setColorAt(0, light(0.22));
    onLabel.setColorAt(1, light(0));
    painter.fillPath(disc(middle, radius * labelPart), onLabel);
}

// The arm hangs from its pivot at the top right, and swings until the needle lies in that groove.
QTransform swungTo(double groove, QPointF pivot, double length, const QRectF& record) {
    const QPointF middle = record.center() - pivot;
    const double away = std::hypot(middle.x(), middle.y());
    const double cosine = (away * away + length * length - groove * groove) / (2 * away * length);
    const double angle = std::atan2(middle.y(), middle.x()) - std::acos(std::clamp(cosine, -1.0, 1.0));
    return {std::sin(angle), -std::cos(angle), std::cos(angle), std::sin(angle), pivot.x(), pivot.y()};
}

void paintArm(QPainter& painter, const QRectF& record, QPointF pivot, double played) {
    const double radius = record.width() / 2;
    const double length = radius * 1.35;
    const double groove = radius * (firstGroove + (lastGroove - firstGroove) * played);
    const auto swing = swungTo(groove, pivot, length, record);
    const QPointF bend{10, length * 0.67};
    const QPointF needle = swing.map(QPointF{0, length});
    const QPointF elbow = swing.map(bend);
    QPainterPath arm;
    arm.cubicTo(bend * 0.5 + QPointF{5, -2}, bend + QPointF{-1, -12}, bend);
    arm.lineTo(QPointF{0, length});
    arm = swing.map(arm);
    painter.strokePath(arm.translated(2.5, 5), QPen{faint(tint::umber, 0.22), 5, Qt::SolidLine, Qt::RoundCap});
    painter.strokePath(arm, QPen{QColor{178, 158, 130}, 4.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.strokePath(arm.translated(-0.5, -0.7),
                       QPen{QColor{250, 242, 226}, 2.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    painter.save();
    painter.translate(needle);
    painter.rotate(QLineF{elbow, needle}.angle() * -1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint::coralInk);
    painter.drawRoundedRect(QRectF{-9, -4.6, 18, 9.2}, 2, 2);
    painter.setBrush(tint::coral);
    painter.drawRoundedRect(QRectF{-9, -4.6, 18, 6.4}, 2, 2);
    painter.restore();
    paintShadow(painter, disc(pivot, 12), 0.7);
    QRadialGradient base{pivot - QPointF{4, 4}, 18};
    base.setColorAt(0, {255, 249, 236});
    base.setColorAt(1, {202, 180, 148});
    painter.fillPath(disc(pivot, 12), base);
    painter.fillPath(disc(pivot, 4.6), tint::brass);
    painter.fillPath(disc(pivot - QPointF{1.2, 1.4}, 1.7), faint(tint::light, 0.75));
}

// A strip of paper across the lower edge: what it is, and who plays it.
void paintStrip(QPainter& painter, const MusicFace& face, QSizeF size) {
    const QString second = face.state == MusicFace::State::paused && !face.words.isEmpty()
                               ? face.words + (face.artist.isEmpty() ? QString{} : QStringLiteral(" · ") + face.artist)
                               : face.artist;
    const QFont title = fitted(hand(27, QFont::Bold), face.title, size.width() - 22, 20);
    const QFont artist = sans(13, QFont::DemiBold);
    const double text =
        std::max(QFontMetricsF{title}.horizontalAdvance(face.title), QFontMetricsF{artist}.horizontalAdvance(second));
    const double width = std::clamp(text + 34, 120.0, size.width() + 6);
    painter.save();
    painter.translate(size.width() / 2 - 4, size.height() - 12);
    painter.rotate(-1.8);
    QPainterPath strip;
    strip.addRoundedRect(QRectF{-width / 2, -25, width, second.isEmpty() ? 38.0 : 50.0}, 2.5, 2.5);
    paintShadow(painter, strip, 0.8);
    paintPaper(painter, strip, cardPaper());
    // Marks may be piled on letters as high as a house.
    painter.setClipPath(strip, Qt::IntersectClip);
    painter.setPen(tint::ink);
    drawLine(painter, {-width / 2 + 14, -24, width - 28, 32}, Qt::AlignCenter, face.title, title);
    painter.setPen(tint::softInk);
    drawLine(painter, {-width / 2 + 14, 4, width - 28, 18}, Qt::AlignCenter, second, artist);
    painter.restore();
}

// Nothing plays: the record is back in its sleeve.
void paintSleeve(QPainter& painter, const MusicFace& face, QSizeF size) {
    const double side = size.height() - 12;
    const QPointF middle{size.width() - side * 0.46 - 2, 6 + side / 2};
    paintShadow(painter, disc(middle, side * 0.46), 1);
    paintDisc(painter, middle, side * 0.46, {});
    paintSheen(painter, middle, side * 0.46);
    QPainterPath sleeve;
    sleeve.addRoundedRect(QRectF{0, 6, side - 12, side}, 3, 3);
    paintShadow(painter, sleeve, 1);
    paintPaper(
        painter, sleeve,
        {lit({252, 240, 214}, 0.70), lit({246, 228, 196}, 0.70), lit({226, 204, 166}, 0.70), tint::ink, tint::coral});
    painter.save();
    painter.setClipPath(sleeve, Qt::IntersectClip);
    const QPointF sun{side * 0.47, side * 0.66};
    const std::array<QColor, 4> bands{{{122, 168, 158}, {240, 196, 112}, {232, 146, 104}, {206, 92, 72}}};
    double radius = side * 0.44;
    for (const auto& band : bands) {
        QPainterPath half = disc(sun, radius);
        QPainterPath above;
        above.addRect(0, 0, size.width(), sun.y());
        painter.fillPath(half.intersected(above), lit(band, 0.25));
        radius -= side * 0.095;
    }
    painter.restore();
    paintGrain(painter, sleeve, 1.2);
    paintEdge(painter, sleeve);
    painter.setPen(tint::ink);
    drawLines(painter, {12, sun.y() + 2, side - 36, side - sun.y() + 2}, Qt::AlignCenter, face.words, hand(29), 2);
}

} // namespace

QRectF recordRect(QSizeF size) {
    const double side = std::min(size.width(), size.height()) - 18;
    return {4, 2, side, side};
}

double coverSide(QSizeF size) {
    return recordRect(size).width() * labelPart;
}

void paintRecordRest(QPainter& painter, const MusicFace& face, QSizeF size) {
    painter.setRenderHint(QPainter::Antialiasing);
    if (face.state == MusicFace::State::none) return paintSleeve(painter, face, size);
    const QRectF rect = recordRect(size);
    paintShadow(painter, disc(rect.center(), rect.width() / 2), 1.2);
}

void paintRecord(QPainter& painter, const MusicFace& face, QSizeF size) {
    if (face.state == MusicFace::State::none) return;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF rect = recordRect(size);
    paintDisc(painter, rect.center(), rect.width() / 2, face.cover.pixels());
}

void paintRecordLight(QPainter& painter, const MusicFace& face, QSizeF size) {
    if (face.state == MusicFace::State::none) return;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF rect = recordRect(size);
    paintSheen(painter, rect.center(), rect.width() / 2);
    paintArm(painter, rect, {size.width() - 13, 20}, static_cast<double>(face.armStep) / MusicFace::armSteps);
    if (!face.title.isEmpty() || !face.artist.isEmpty()) paintStrip(painter, face, size);
}

void paintFace(QPainter& painter, const MusicFace& face, QSizeF size) {
    paintRecordRest(painter, face, size);
    paintRecord(painter, face, size);
    paintRecordLight(painter, face, size);
}

} // namespace lumaro
