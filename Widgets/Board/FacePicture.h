// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Items/ItemFace.h"
#include "Widgets/Picture/PictureItem.h"

#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// A picture of an item or of a part of it: painted when what it shows of the face or its scale changes.
// The tools of QML look for the base by its whole name.
class FacePicture : public lumaro::PictureItem {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(lumaro::ItemFace face READ face WRITE setFace NOTIFY faceChanged)
    Q_PROPERTY(QSizeF naturalSize READ naturalSize WRITE setNaturalSize NOTIFY placeChanged)
    Q_PROPERTY(double pointScale READ pointScale WRITE setPointScale NOTIFY placeChanged)
    Q_PROPERTY(bool dark READ isDark WRITE setDark NOTIFY darkChanged)

public:
    const ItemFace& face() const { return face_; }
    void setFace(const ItemFace& face);
    /// The unscaled size of the paper, in points of the canvas.
    QSizeF naturalSize() const { return naturalSize_; }
    void setNaturalSize(QSizeF size);
    /// Pixels of the view for a point of the canvas, the item's own scale included.
    double pointScale() const { return pointScale_; }
    void setPointScale(double scale);
    /// Whether it hangs in lamplight.
    bool isDark() const { return isDark_; }
    void setDark(bool isDark);

    void paint(QPainter& painter) final;

Q_SIGNALS:
    void darkChanged();
    void faceChanged();
    /// Of its size, or of where it lies from the paper's corner.
    void placeChanged();

protected:
    using PictureItem::PictureItem;

    /// Takes the size that the face has at the scale.
    virtual void lay() = 0;
    /// `paint`, in the light in which it hangs.
    virtual void paintLit(QPainter& painter) = 0;
    /// Whether the picture is the same for both faces.
    virtual bool looksSame(const ItemFace& before, const ItemFace& after) const { return before == after; }

    /// The picture among what is painted, if there is one.
    virtual ItemPicture pictureWithin() const { return face_.picture(); }

    bool isReady() override;

private:
    void layAnew();

    ItemFace face_;
    QSizeF naturalSize_{0, 0};
    double pointScale_ = 1;
    bool isDark_ = false;
};

} // namespace lumaro
