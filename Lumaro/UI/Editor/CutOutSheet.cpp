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

void CutOutSheet::setSession(CutOutSession* session) {
    if (session_ == session) return;
    if (session_ != nullptr) session_->disconnect(this);
    session_ = session;
    if (session_ != nullptr) connect(session_, &CutOutSession::changed, this, [this] { update(); });
    Q_EMIT sessionChanged();
    update();
}

void CutOutSheet::paint(QPainter* painter) {
    if (session_ == nullptr || session_->picture().isNull()) return;
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawImage(boundingRect(), session_->picture());
    if (!session_->hasEdge()) return;
    painter->scale(width() / session_->picture().width(), height() / session_->picture().height());
    QPainterPath around;
    around.addRect(QRectF{session_->picture().rect()});
    painter->fillPath(around.subtracted(session_->outline()), dimmed);
    for (const auto& [color, width] : {std::pair{edgeShade, 5.0}, std::pair{edge, 2.5}}) {
        QPen pen{color, width};
        pen.setCosmetic(true);
        pen.setJoinStyle(Qt::RoundJoin);
        painter->strokePath(session_->outline(), pen);
    }
}

} // namespace lumaro
