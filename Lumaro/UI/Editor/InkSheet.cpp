// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/InkSheet.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Light.h"

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

void InkSheet::setEditor(EditorView* editor) {
    if (editor_ == editor) return;
    if (editor_ != nullptr) editor_->disconnect(this);
    editor_ = editor;
    if (editor_ != nullptr) connect(editor_, &EditorView::inkChanged, this, &InkSheet::inkChanged);
    Q_EMIT editorChanged();
    update();
}

void InkSheet::inkChanged() {
    const auto& doodle = editor_->model().pen().session();
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
    if (editor_ == nullptr || !editor_->model().pen().session()) return;
    const auto& doodle = *editor_->model().pen().session();
    DoodlePayload ink{.width = BoardSpec::canvasSize.width,
                      .height = BoardSpec::canvasSize.height,
                      .strokes = doodle.strokes(),
                      .on = {}};
    if (doodle.line()) ink.strokes.push_back(*doodle.line());
    const auto& [scale, offset] = canvas_.transform();
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    painter->translate(offset.x, offset.y);
    painter->scale(scale, scale);
    paintItem(*painter, ItemFace{DoodleFace{std::move(ink)}},
              {BoardSpec::canvasSize.width, BoardSpec::canvasSize.height});
}

} // namespace lumaro
