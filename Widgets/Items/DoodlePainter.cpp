// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Tokens.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>

namespace lumaro {
namespace {

/// An ink in the light in which it is painted, and the rim around its strokes, if it has one.
struct ShownInk {
    QColor colour;
    QColor rim{};
};

ShownInk shownInk(const std::string& name) {
    const auto shown = [](const InkTone& tone) -> ShownInk {
        const bool isRimmed = tone.rim != 0 && !InLight::isLamp();
        return {QColor::fromRgba(tone.shown(InLight::isLamp())), isRimmed ? QColor::fromRgba(tone.rim) : QColor{}};
    };
    for (const auto& tone : inkTones) {
        if (name == tone.name) return shown(tone);
    }
    const QColor own = name.starts_with('#') ? QColor{QString::fromStdString(name)} : QColor{};
    return own.isValid() ? ShownInk{own} : shown(inkTones.front());
}

/// How far a rim reaches beyond the stroke on each side, in points.
double rimWidth(const InkStroke& stroke) {
    return std::clamp(usableInkWidth(stroke.width) * 0.16, 0.9, 2.2);
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

QPen penOf(const InkStroke& stroke, const QColor& colour, double wider = 0) {
    return {colour, usableInkWidth(stroke.width) + wider, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
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
        const auto ink = shownInk(stroke.ink);
        const auto path = inkPath(stroke);
        if (ink.rim.isValid()) painter.strokePath(path, penOf(stroke, ink.rim, 2 * rimWidth(stroke)));
        painter.strokePath(path, penOf(stroke, ink.colour));
    }
}

} // namespace lumaro
