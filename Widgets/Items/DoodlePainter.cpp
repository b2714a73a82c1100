// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Tokens.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace lumaro {
namespace {

QColor inkColour(const std::string& name) {
    for (const auto& tone : inkTones) {
        if (name == tone.name) return QColor{tone.color};
    }
    const QColor own = name.starts_with('#') ? QColor{QString::fromStdString(name)} : QColor{};
    return own.isValid() ? own : QColor{inkTones.front().color};
}

QPointF place(Point point) {
    return {point.x, point.y};
}

// From middle to middle of the points, each point pulling the curve: no corner is left.
QPainterPath inkPath(const InkStroke& stroke) {
    std::vector<Point> points;
    for (const auto point : stroke.points) {
        if (isInkPoint(point)) points.push_back(point);
    }
    if (points.empty()) return {};
    QPainterPath path{place(points.front())};
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        path.quadTo(place(points[i]), place(between(points[i], points[i + 1], 0.5)));
    }
    // A dot is a line to itself; its round caps make it one.
    path.lineTo(place(points.back()) + (points.size() == 1 ? QPointF{0.01, 0} : QPointF{}));
    return path;
}

QPen penOf(const InkStroke& stroke, const QColor& colour) {
    return {colour, usableInkWidth(stroke.width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

} // namespace

void paintFace(QPainter& painter, const DoodleFace& face, QSizeF size) {
    const auto own = face.doodle.size();
    if (own.width > 0 && own.height > 0) painter.scale(size.width() / own.width, size.height() / own.height);
    // Ink on glass stands a hair's breadth before the paper behind it.
    for (const auto& stroke : face.doodle.strokes) {
        painter.strokePath(inkPath(stroke).translated(0.9, 1.7), penOf(stroke, faint(tint::umber, 0.13)));
    }
    for (const auto& stroke : face.doodle.strokes) {
        painter.strokePath(inkPath(stroke), penOf(stroke, inkColour(stroke.ink)));
    }
}

} // namespace lumaro
