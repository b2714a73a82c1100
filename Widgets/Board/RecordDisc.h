// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Board/PictureItem.h"
#include "Widgets/Items/ItemFace.h"

#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The disc of a record, to be turned about its own middle; it is painted once for each face and scale. Empty while
/// nothing plays. `discX` and `discY` say where its corner lies from that of the item's paper, in pixels of the view.
// The tools of QML look for the base by its whole name.
class RecordDisc : public lumaro::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::ItemFace face READ face WRITE setFace NOTIFY faceChanged)
    Q_PROPERTY(QSizeF naturalSize READ naturalSize WRITE setNaturalSize NOTIFY placeChanged)
    Q_PROPERTY(double pointScale READ pointScale WRITE setPointScale NOTIFY placeChanged)
    Q_PROPERTY(bool isTurning READ isTurning NOTIFY faceChanged)
    Q_PROPERTY(double discX READ discX NOTIFY placeChanged)
    Q_PROPERTY(double discY READ discY NOTIFY placeChanged)

public:
    explicit RecordDisc(QQuickItem* parent = nullptr);

    const ItemFace& face() const { return face_; }
    void setFace(const ItemFace& face);
    QSizeF naturalSize() const { return naturalSize_; }
    void setNaturalSize(QSizeF size);
    double pointScale() const { return pointScale_; }
    void setPointScale(double scale);
    /// Whether music plays.
    bool isTurning() const;
    double discX() const;
    double discY() const;

    void paint(QPainter& painter) override;

Q_SIGNALS:
    void faceChanged();
    void placeChanged();

private:
    void lay();

    ItemFace face_;
    QSizeF naturalSize_{220, 220};
    double pointScale_ = 1;
};

} // namespace lumaro
