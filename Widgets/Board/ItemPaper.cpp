// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/ItemPaper.h"

#include "Widgets/Items/ItemPainting.h"

#include <QtGui/QPainter>

#include <cmath>

namespace lumaro {

ItemPaper::ItemPaper(QQuickItem* parent) : PictureItem(parent) {
    lay();
}

void ItemPaper::setFace(const ItemFace& face) {
    if (face_ == face) return;
    face_ = face;
    lay();
    Q_EMIT faceChanged();
}

void ItemPaper::setNaturalSize(QSizeF size) {
    if (naturalSize_ == size) return;
    naturalSize_ = size;
    lay();
    Q_EMIT naturalSizeChanged();
}

void ItemPaper::setPointScale(double scale) {
    if (pointScale_ == scale) return;
    pointScale_ = scale;
    lay();
    Q_EMIT pointScaleChanged();
}

void ItemPaper::setPart(Part part) {
    if (part_ == part) return;
    part_ = part;
    repaint();
    Q_EMIT partChanged();
}

void ItemPaper::lay() {
    const auto reach = lumaro::bleed(face_) * pointScale_;
    const QMarginsF whole{std::ceil(reach.left()), std::ceil(reach.top()), std::ceil(reach.right()),
                          std::ceil(reach.bottom())};
    setImplicitSize(std::ceil(naturalSize_.width() * pointScale_) + whole.left() + whole.right(),
                    std::ceil(naturalSize_.height() * pointScale_) + whole.top() + whole.bottom());
    repaint();
    if (bleed_ == whole) return;
    bleed_ = whole;
    Q_EMIT bleedChanged();
}

void ItemPaper::paint(QPainter& painter) {
    painter.translate(bleed_.left(), bleed_.top());
    painter.scale(pointScale_, pointScale_);
    if (part_ == Part::Whole) return paintItem(painter, face_, naturalSize_);
    const auto* const music = face_.as<MusicFace>();
    if (!music) return;
    if (part_ == Part::Under)
        paintRecordRest(painter, *music, naturalSize_);
    else
        paintRecordLight(painter, *music, naturalSize_);
}

} // namespace lumaro
