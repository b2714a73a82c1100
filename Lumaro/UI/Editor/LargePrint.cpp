// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/LargePrint.h"

#include <QtGui/QPainter>

namespace lumaro {

void LargePrint::setView(LargeView* view) {
    if (view_ == view) return;
    if (view_ != nullptr) view_->disconnect(this);
    view_ = view;
    if (view_ != nullptr) connect(view_, &LargeView::changed, this, [this] { update(); });
    Q_EMIT viewChanged();
    update();
}

void LargePrint::paint(QPainter* painter) {
    if (view_ == nullptr || view_->pixels().isNull()) return;
    const QImage& pixels = view_->pixels();
    const QSizeF size = QSizeF{pixels.size()}.scaled(boundingRect().size(), Qt::KeepAspectRatio);
    QRectF place{{0, 0}, size};
    place.moveCenter(boundingRect().center());
    // Qt's own painting leaves out pixels when it makes a picture much smaller.
    const double ratio = painter->device()->devicePixelRatioF();
    const QSize sharp = (size * ratio).toSize().expandedTo({1, 1});
    if (sharp.width() * 2 < pixels.width()) {
        painter->drawImage(place, pixels.scaled(sharp, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    } else {
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->drawImage(place, pixels);
    }
}

} // namespace lumaro
