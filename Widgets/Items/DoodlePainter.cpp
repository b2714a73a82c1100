// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Tokens.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkWidths.h"
#include "Widgets/Items/InkRibbon.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <vector>

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

// As little of a stroke as can be told without looking at each of its points closely.
bool isInSight(const InkStroke& stroke, const QRectF& sight) {
    if (sight.isEmpty()) return true;
    QRectF box;
    const double reach = usableInkWidth(stroke.width) * thickInk;
    for (const auto point : stroke.points) {
        if (isInkPoint(point)) box |= QRectF{point.x - reach, point.y - reach, 2 * reach, 2 * reach};
    }
    return box.intersects(sight);
}

/// A stroke ready to be painted: a live line as what its ink covers, any other as a path for a pen.
struct Line {
    QPainterPath path;
    double width = 0;
    double rimWidth = 0;
    ShownInk ink;
    bool isLive = false;

    void paint(QPainter& painter, QPointF aside, const QColor& colour, double wider = 0) const {
        const auto placed = path.translated(aside);
        const QPen pen{colour, isLive ? wider : width + wider, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
        if (isLive) painter.fillPath(placed, colour);
        if (pen.widthF() > 0) painter.strokePath(placed, pen);
    }
};

std::vector<Line> linesOf(const DoodlePayload& doodle, const QRectF& sight) {
    std::vector<Line> lines;
    for (const auto& stroke : doodle.strokes) {
        if (!isInSight(stroke, sight)) continue;
        const bool isLive = isLiveInk(stroke.points);
        lines.push_back({.path = isLive ? inkRibbon(stroke) : inkPath(stroke),
                         .width = usableInkWidth(stroke.width),
                         .rimWidth = rimWidth(stroke),
                         .ink = shownInk(stroke.ink),
                         .isLive = isLive});
    }
    return lines;
}

} // namespace

void paintFace(QPainter& painter, const DoodleFace& face, QSizeF size) {
    const auto own = face.doodle.size();
    if (own.width > 0 && own.height > 0) painter.scale(size.width() / own.width, size.height() / own.height);
    const auto lines = linesOf(face.doodle, painter.hasClipping() ? painter.clipBoundingRect() : QRectF{});
    // Ink on glass stands a hair's breadth before the paper behind it.
    for (const auto& line : lines) line.paint(painter, {0.9, 1.7}, faint(tint::umber, 0.13));
    for (const auto& line : lines) {
        if (line.ink.rim.isValid()) line.paint(painter, {}, line.ink.rim, 2 * line.rimWidth);
        line.paint(painter, {}, line.ink.colour);
    }
}

} // namespace lumaro
