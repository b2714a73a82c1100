// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Board/PictureItem.h"

#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <utility>

namespace lumaro {

PictureItem::PictureItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PictureItem::repaint() {
    isStale_ = true;
    update();
}

QSGNode* PictureItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    const double density = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * density).toSize();
    if (pixels.isEmpty()) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<QSGImageNode*>(old);
    if (node == nullptr) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        isStale_ = true;
    }
    if (std::exchange(isStale_, false)) {
        node->setTexture(
            window()->createTextureFromImage(painted(pixels, density), QQuickWindow::TextureHasAlphaChannel));
        node->setSourceRect(QRectF{{0, 0}, pixels.toSizeF()});
        node->setRect(QRectF{{0, 0}, pixels.toSizeF() / density});
    }
    return node;
}

QImage PictureItem::painted(QSize pixels, double density) {
    QImage picture{pixels, QImage::Format_ARGB32_Premultiplied};
    picture.setDevicePixelRatio(density);
    picture.fill(Qt::transparent);
    QPainter painter{&picture};
    paint(painter);
    return picture;
}

void PictureItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) repaint();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged) repaint();
}

} // namespace lumaro
