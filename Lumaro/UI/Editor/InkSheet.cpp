// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/InkSheet.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace lumaro {
namespace {

/// A smoothed line still moves between its last points.
constexpr std::size_t unsettledPoints = 4;

/// In points of the canvas.
QRectF boxOf(std::span<const Point> points, double margin) {
    QRectF box;
    for (const auto& point : points) {
        box |= QRectF{point.x - margin, point.y - margin, 2 * margin, 2 * margin};
    }
    return box;
}

} // namespace

InkSheet::InkSheet(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &InkSheet::canvasChanged, this, [this] { update(); });
}

void InkSheet::setPen(PenView* pen) {
    if (pen_ == pen) return;
    if (pen_ != nullptr) pen_->disconnect(this);
    pen_ = pen;
    if (pen_ != nullptr) connect(pen_, &PenView::changed, this, &InkSheet::inkChanged);
    Q_EMIT penChanged();
    update();
}

void InkSheet::inkChanged() {
    const auto& doodle = pen_->session();
    const auto* const line = doodle && doodle->line() ? &*doodle->line() : nullptr;
    if (line == nullptr || line->points.size() < painted_ || painted_ == 0) {
        painted_ = line == nullptr ? 0 : line->points.size();
        update();
        return;
    }
    const std::size_t from = painted_ - std::min(painted_, unsettledPoints);
    const auto box = boxOf(std::span{line->points}.subspan(from), line->width);
    painted_ = line->points.size();
    const auto [corner, size] = canvas_.transform().viewRect({{box.x(), box.y()}, {box.width(), box.height()}});
    update(QRectF{corner.x, corner.y, size.width, size.height}.toAlignedRect().adjusted(-2, -2, 2, 2));
}

void InkSheet::paint(QPainter* painter) {
    if (pen_ == nullptr || !pen_->session()) return;
    const auto& doodle = *pen_->session();
    DoodlePayload ink{.width = BoardSpec::canvasSize.width,
                      .height = BoardSpec::canvasSize.height,
                      .strokes = doodle.strokes(),
                      .on = {}};
    if (doodle.line()) ink.strokes.push_back(*doodle.line());
    const auto& [scale, offset] = canvas_.transform();
    painter->translate(offset.x, offset.y);
    painter->scale(scale, scale);
    paintItem(*painter, ItemFace{DoodleFace{std::move(ink)}},
              {BoardSpec::canvasSize.width, BoardSpec::canvasSize.height});
}

} // namespace lumaro
