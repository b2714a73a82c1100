// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/InkSheet.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Geometry/InkWidths.h"
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/Light.h"

#include <QtGui/QPainter>

#include <span>
#include <utility>

namespace lumaro {
namespace {

/// How far back from its end a line still changes while it grows, in points: there it is being smoothed.
constexpr double unsettled = 48;

/// Around the end of the line, from the sample at `from` or where it still changes, in points of the canvas.
QRectF boxOfEnd(std::span<const PenSample> samples, std::size_t from, double margin) {
    QRectF box;
    double back = 0;
    for (std::size_t i = samples.size(); i > 0 && (i > from || back < unsettled); --i) {
        const Point place = samples[i - 1].place;
        box |= QRectF{place.x - margin, place.y - margin, 2 * margin, 2 * margin};
        if (i > 1 && i <= from) back += distance(place, samples[i - 2].place);
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
    const auto samples = doodle ? doodle->samples() : std::span<const PenSample>{};
    if (samples.size() < painted_ || painted_ == 0 || samples.empty()) {
        painted_ = samples.size();
        update();
        return;
    }
    if (samples.size() == painted_) return;
    const auto box = boxOfEnd(samples, painted_, doodle->penWidth() * thickInk);
    painted_ = samples.size();
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
    if (auto line = doodle.line()) ink.strokes.push_back(std::move(*line));
    const auto& [scale, offset] = canvas_.transform();
    const InLight light{isDark_ ? Appearance::dark : Appearance::light};
    painter->translate(offset.x, offset.y);
    painter->scale(scale, scale);
    paintItem(*painter, ItemFace{DoodleFace{std::move(ink)}},
              {BoardSpec::canvasSize.width, BoardSpec::canvasSize.height});
}

} // namespace lumaro
