// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Thread/ThreadPainting.h"

#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr double bowStart = 0.8; // until then the halves come to the middle
constexpr QColor red{196, 58, 52};

QPointF knotOf(QSizeF size) {
    return {size.width() / 2, size.height() * 0.56};
}

// From one edge to the knot: it hangs through, as thread does.
QPainterPath halfOf(QSizeF size, bool isLeft) {
    const QPointF knot = knotOf(size);
    const double start = isLeft ? 0 : size.width();
    const double length = knot.x() - start;
    QPainterPath half{{start, size.height() * (isLeft ? 0.06 : 0.12)}};
    half.cubicTo({start + length * 0.30, size.height() * (isLeft ? 0.44 : 0.42)},
                 {start + length * 0.66, knot.y() + size.height() * 0.06}, knot);
    return half;
}

// The first part of a path, as a path.
QPainterPath begun(const QPainterPath& path, double part) {
    if (part >= 1) return path;
    constexpr int steps = 96;
    QPainterPath cut{path.pointAtPercent(0)};
    for (int i = 1; i <= steps; ++i) cut.lineTo(path.pointAtPercent(part * i / steps));
    return cut;
}

// Loops and ends of the bow about the knot, in points.
std::array<QPainterPath, 4> bow() {
    std::array<QPainterPath, 4> strands;
    strands[0].moveTo(0, 0);
    strands[0].cubicTo(-16, -22, -46, -20, -40, 0);
    strands[0].cubicTo(-36, 13, -14, 8, 0, 0);
    strands[1].moveTo(0, 0);
    strands[1].cubicTo(14, -24, 44, -24, 40, -3);
    strands[1].cubicTo(37, 11, 15, 9, 0, 0);
    strands[2].moveTo(0, 0);
    strands[2].cubicTo(-6, 16, -18, 22, -19, 40);
    strands[3].moveTo(0, 0);
    strands[3].cubicTo(8, 15, 10, 28, 22, 37);
    return strands;
}

void paintStrand(QPainter& painter, const QPainterPath& strand, double width) {
    const auto pen = [&](const QColor& colour, double part) {
        return QPen{colour, width * part, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
    };
    painter.strokePath(strand, pen(mixed(red, tint::umber, 0.34), 1));
    painter.strokePath(strand, pen(red, 0.78));
    // The twist of the yarn, and the light on it.
    QPen twist{QColor{224, 104, 88}, width * 0.40, Qt::CustomDashLine, Qt::FlatCap};
    twist.setDashPattern({1.4, 2.2});
    painter.strokePath(strand.translated(-width * 0.10, -width * 0.16), twist);
}

void paintShadowOf(QPainter& painter, const QPainterPath& strand, double width) {
    for (const auto& [spread, opacity] : {std::pair{2.6, 0.05}, {1.8, 0.07}, {1.1, 0.10}}) {
        painter.strokePath(
            strand.translated(width * 0.9, width * 1.9),
            QPen{faint(tint::umber, opacity), width * spread, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
    }
}

} // namespace

void paintThread(QPainter& painter, QSizeF size, double scale, double progress) {
    if (progress <= 0 || size.isEmpty()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    const double width = 3.4 * scale;
    std::vector<QPainterPath> strands;
    const double drawn = std::min(1.0, progress / bowStart);
    for (const bool isLeft : {true, false}) strands.push_back(begun(halfOf(size, isLeft), drawn));
    const double tied = (progress - bowStart) / (1 - bowStart);
    if (tied > 0) {
        const QPointF knot = knotOf(size);
        const auto placed = QTransform{}.translate(knot.x(), knot.y()).scale(scale, scale);
        for (const auto& strand : bow()) strands.push_back(placed.map(begun(strand, tied)));
    }
    for (const auto& strand : strands) paintShadowOf(painter, strand, width);
    for (const auto& strand : strands) paintStrand(painter, strand, width);
    if (tied > 0) {
        QPainterPath knot;
        knot.addRoundedRect(QRectF{-5.5, -4.6, 11, 9.2}.translated(knotOf(size) / scale), 4, 4);
        painter.scale(scale, scale);
        painter.fillPath(knot, mixed(red, tint::umber, 0.30));
        painter.fillPath(knot.translated(-0.5, -0.8), red);
        painter.setPen(QPen{QColor{238, 122, 104, 170}, 1.1});
        const QPointF middle = knotOf(size) / scale;
        for (const double x : {-2.6, 0.0, 2.6}) {
            painter.drawLine(middle + QPointF{x - 0.6, 2.2}, middle + QPointF{x + 0.4, -3.2});
        }
    }
}

} // namespace lumaro
