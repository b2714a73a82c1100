// SPDX-License-Identifier: Apache-2.0
#include "Widgets/Picture/PictureItem.h"

#include <QtCore/QThreadPool>
#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

namespace lumaro {
namespace {

constexpr int largePicture = 512 * 1024; // pixels

/// Runs `work` and waits for it. Qt shares out the lines of each fill among the threads of its pool, unless it paints
/// on one of them: for a card that would be a hundred times to wake a thread for next to nothing.
void onPoolThread(const std::function<void()>& work) {
    std::mutex mutex; // held by the thread that may touch what `work` works on
    std::condition_variable changed;
    bool isDone = false;
    std::unique_lock waiting{mutex};
    QThreadPool::globalInstance()->start([&] {
        const std::lock_guard working{mutex};
        work();
        isDone = true;
        changed.notify_one();
    });
    changed.wait(waiting, [&] { return isDone; });
}

} // namespace

PictureItem::PictureItem(QQuickItem* parent, Cover cover) : QQuickItem(parent), cover_(cover) {
    setFlag(ItemHasContents);
}

void PictureItem::repaint() {
    isStale_ = true;
    update();
}

QSGNode* PictureItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    const double ratio = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * ratio).toSize();
    if (pixels.isEmpty() || !isVisible()) {
        delete old;
        return nullptr;
    }
    auto* node = static_cast<QSGImageNode*>(old);
    const bool isNew = node == nullptr;
    if (isNew) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
    }
    node->setRect(QRectF{{0, 0}, pixels.toSizeF() / ratio});
    if ((isStale_ || isNew) && (isReady() || isNew)) {
        isStale_ = false;
        const auto kind =
            cover_ == Cover::opaque ? QQuickWindow::TextureIsOpaque : QQuickWindow::TextureHasAlphaChannel;
        node->setTexture(window()->createTextureFromImage(painted(pixels, ratio), kind));
        node->setSourceRect(QRectF{{0, 0}, pixels.toSizeF()});
    }
    return node;
}

QImage PictureItem::painted(QSize pixels, double ratio) {
    const bool isOpaque = cover_ == Cover::opaque;
    QImage picture{pixels, isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied};
    picture.setDevicePixelRatio(ratio);
    if (!isOpaque) picture.fill(Qt::transparent);
    const auto work = [&] {
        QPainter painter{&picture};
        paint(painter);
    };
    pixels.width() * pixels.height() < largePicture ? onPoolThread(work) : work();
    return picture;
}

void PictureItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    if (now.size() != before.size()) repaint();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged) repaint();
    if (change == ItemVisibleHasChanged) update();
}

} // namespace lumaro
