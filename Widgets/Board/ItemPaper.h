// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Board/PictureItem.h"
#include "Widgets/Items/ItemFace.h"

#include <QtCore/QSizeF>
#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The picture of one item, painted when its face or its scale changes and kept as pixels otherwise. It is larger than
/// the paper by the shadows around it: lay it out so that the paper's corner is at (`bleedLeft`, `bleedTop`).
// The tools of QML look for the base by its whole name.
class ItemPaper : public lumaro::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::ItemFace face READ face WRITE setFace NOTIFY faceChanged)
    Q_PROPERTY(QSizeF naturalSize READ naturalSize WRITE setNaturalSize NOTIFY naturalSizeChanged)
    Q_PROPERTY(double pointScale READ pointScale WRITE setPointScale NOTIFY pointScaleChanged)
    Q_PROPERTY(Part part READ part WRITE setPart NOTIFY partChanged)
    Q_PROPERTY(double bleedLeft READ bleedLeft NOTIFY bleedChanged)
    Q_PROPERTY(double bleedTop READ bleedTop NOTIFY bleedChanged)
    Q_PROPERTY(double bleedRight READ bleedRight NOTIFY bleedChanged)
    Q_PROPERTY(double bleedBottom READ bleedBottom NOTIFY bleedChanged)

public:
    /// A record that turns is three things on top of each other: the part under the disc, a `RecordDisc`, and the part
    /// over it. `under` and `over` show nothing of other kinds.
    enum class Part { Whole, Under, Over };
    Q_ENUM(Part)

    explicit ItemPaper(QQuickItem* parent = nullptr);

    const ItemFace& face() const { return face_; }
    void setFace(const ItemFace& face);
    /// The unscaled size of the paper, in points of the canvas.
    QSizeF naturalSize() const { return naturalSize_; }
    void setNaturalSize(QSizeF size);
    /// Pixels of the view for a point of the canvas, the item's own scale included.
    double pointScale() const { return pointScale_; }
    void setPointScale(double scale);
    Part part() const { return part_; }
    void setPart(Part part);

    /// How far the picture reaches beyond the paper, in whole pixels of the view.
    double bleedLeft() const { return bleed_.left(); }
    double bleedTop() const { return bleed_.top(); }
    double bleedRight() const { return bleed_.right(); }
    double bleedBottom() const { return bleed_.bottom(); }

    void paint(QPainter& painter) override;

Q_SIGNALS:
    void faceChanged();
    void naturalSizeChanged();
    void pointScaleChanged();
    void partChanged();
    void bleedChanged();

private:
    void lay();

    ItemFace face_;
    QSizeF naturalSize_{280, 280};
    double pointScale_ = 1;
    Part part_ = Part::Whole;
    QMarginsF bleed_;
};

} // namespace lumaro
