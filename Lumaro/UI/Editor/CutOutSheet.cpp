// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/CutOutSheet.h"

#include <QtGui/QPainter>

namespace lumaro {
namespace {

constexpr QColor dimmed{0x2A, 0x21, 0x1A, 0x99};
constexpr QColor edge{0xFF, 0xF8, 0xEA};
constexpr QColor edgeShade{0x3B, 0x2E, 0x22, 0xB0};

} // namespace

CutOutSheet::CutOutSheet(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void CutOutSheet::setDesk(CutOutDesk* desk) {
    if (desk_ == desk) return;
    if (desk_ != nullptr) desk_->disconnect(this);
    desk_ = desk;
    if (desk_ != nullptr) connect(desk_, &CutOutDesk::changed, this, [this] { update(); });
    Q_EMIT deskChanged();
    update();
}

void CutOutSheet::paint(QPainter* painter) {
    if (desk_ == nullptr || desk_->picture().isNull()) return;
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(boundingRect(), desk_->picture());
    if (!desk_->hasEdge()) return;
    painter->scale(width() / desk_->picture().width(), height() / desk_->picture().height());
    QPainterPath around;
    around.addRect(QRectF{desk_->picture().rect()});
    painter->fillPath(around.subtracted(desk_->outline()), dimmed);
    for (const auto& [color, width] : {std::pair{edgeShade, 5.0}, std::pair{edge, 2.5}}) {
        QPen pen{color, width};
        pen.setCosmetic(true);
        pen.setJoinStyle(Qt::RoundJoin);
        painter->strokePath(desk_->outline(), pen);
    }
}

} // namespace lumaro
