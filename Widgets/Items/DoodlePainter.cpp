// SPDX-License-Identifier: Apache-2.0
#include "DesignSystem/Tokens.h"
#include "LumaroCore/Geometry/InkLine.h"
#include "LumaroCore/Geometry/InkWidths.h"
#include "Widgets/Items/InkRibbon.h"
#include "Widgets/Items/Painters.h"
#include "Widgets/Items/Palette.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <vector>

namespace lumaro {
namespace {

QColor inkColour(const std::string& name) {
    for (const auto& tone : inkTones) {
        if (name == tone.name) return QColor{tone.color};
    }
    const QColor own = name.starts_with('#') ? QColor{QString::fromStdString(name)} : QColor{};
    return own.isValid() ? own : QColor{inkTones.front().color};
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
    QColor colour;
    bool isLive = false;

    void paint(QPainter& painter, QPointF aside, const QColor& ink) const {
        if (isLive) {
            painter.fillPath(path.translated(aside), ink);
        } else {
            painter.strokePath(path.translated(aside), {ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin});
        }
    }
};

std::vector<Line> linesOf(const DoodlePayload& doodle, const QRectF& sight) {
    std::vector<Line> lines;
    for (const auto& stroke : doodle.strokes) {
        if (!isInSight(stroke, sight)) continue;
        const bool isLive = isLiveInk(stroke.points);
        lines.push_back({.path = isLive ? inkRibbon(stroke) : inkPath(stroke),
                         .width = usableInkWidth(stroke.width),
                         .colour = inkColour(stroke.ink),
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
    for (const auto& line : lines) line.paint(painter, {}, line.colour);
}

} // namespace lumaro
