// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

class QPainter;

namespace lumaro {

/// An item that is painted once and then kept as pixels of its screen, to be moved, turned and covered at little cost.
/// Unlike a painted item of Qt it is also smooth when turned without a graphics processor, and holds its pixels once,
/// and only while it is visible.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    /// Whether every pixel is painted, so that nothing shows through and what lies behind need not be drawn.
    enum class Cover { translucent, opaque };

    explicit PictureItem(QQuickItem* parent = nullptr, Cover cover = Cover::translucent);

    /// Paints the whole item, in pixels of the view. Called while the scene is synchronised, when `repaint` asked for
    /// it.
    virtual void paint(QPainter& painter) = 0;

protected:
    void repaint();
    /// Whether everything is there that `paint` needs. As long as it is not, an item that was painted before keeps its
    /// pixels; once it is, `repaint` is to be called. Called where `paint` is.
    virtual bool isReady() { return true; }

    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    QImage painted(QSize pixels, double ratio);

    Cover cover_;
    bool isStale_ = true;
};

} // namespace lumaro
