// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/ItemFace.h"

#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace lumaro {

/// What falls before the panes of a window card, over its picture. It is painted once and then moved, each pane showing
/// another part of it, so that a step costs the copying of the panes and nothing else. Empty before other faces.
class FallingWeather : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::ItemFace face READ face WRITE setFace NOTIFY changed)
    Q_PROPERTY(QSizeF naturalSize READ naturalSize WRITE setNaturalSize NOTIFY changed)
    Q_PROPERTY(double pointScale READ pointScale WRITE setPointScale NOTIFY changed)
    Q_PROPERTY(double flash READ flash WRITE setFlash NOTIFY flashChanged)
    Q_PROPERTY(bool isFalling READ isFalling NOTIFY changed)
    Q_PROPERTY(bool isStormy READ isStormy NOTIFY changed)

public:
    explicit FallingWeather(QQuickItem* parent = nullptr);

    const ItemFace& face() const { return face_; }
    void setFace(const ItemFace& face);
    QSizeF naturalSize() const { return naturalSize_; }
    void setNaturalSize(QSizeF size);
    double pointScale() const { return pointScale_; }
    void setPointScale(double scale);
    /// How bright lightning is over the panes, 0 to 1.
    double flash() const { return flash_; }
    void setFlash(double flash);
    bool isFalling() const;
    bool isStormy() const;

    /// Lets it fall for so long.
    Q_INVOKABLE void advance(double seconds);

Q_SIGNALS:
    void changed();
    void flashChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    const SkyView* view() const;
    void paintAnew();

    ItemFace face_;
    QSizeF naturalSize_{0, 0};
    double pointScale_ = 1;
    double flash_ = 0;
    QPointF fallen_; ///< heights of the glass
    bool isStale_ = true;
};

} // namespace lumaro
