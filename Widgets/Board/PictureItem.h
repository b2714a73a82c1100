// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

class QPainter;

namespace lumaro {

/// An item that is painted once and then kept as pixels of its screen, to be moved, turned and covered at little cost.
/// Unlike a painted item of Qt it is also smooth when turned without a graphics processor.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PictureItem(QQuickItem* parent = nullptr);

    /// Paints the whole item, in pixels of the view. Called while the scene is synchronised, when `repaint` asked for
    /// it.
    virtual void paint(QPainter& painter) = 0;

protected:
    void repaint();

    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    QImage painted(QSize pixels, double density);

    bool isStale_ = true;
};

} // namespace lumaro
