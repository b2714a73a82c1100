// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Board/FacePicture.h"

#include <QtCore/QMarginsF>

namespace lumaro {

/// The picture of one item. It is larger than the paper by the shadows around it: lay it out so that the paper's corner
/// is at (`bleedLeft`, `bleedTop`).
class ItemPaper : public lumaro::FacePicture {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Part part READ part WRITE setPart NOTIFY partChanged)
    Q_PROPERTY(double bleedLeft READ bleedLeft NOTIFY placeChanged)
    Q_PROPERTY(double bleedTop READ bleedTop NOTIFY placeChanged)
    Q_PROPERTY(double bleedRight READ bleedRight NOTIFY placeChanged)
    Q_PROPERTY(double bleedBottom READ bleedBottom NOTIFY placeChanged)

public:
    /// A record that turns is three things on top of each other: the part under the disc, a `RecordDisc`, and the part
    /// over it. `under` and `over` show nothing of other kinds.
    enum class Part { Whole, Under, Over };
    Q_ENUM(Part)

    using FacePicture::FacePicture;

    Part part() const { return part_; }
    void setPart(Part part);

    /// How far the picture reaches beyond the paper, in whole pixels of the view.
    double bleedLeft() const { return bleed_.left(); }
    double bleedTop() const { return bleed_.top(); }
    double bleedRight() const { return bleed_.right(); }
    double bleedBottom() const { return bleed_.bottom(); }

Q_SIGNALS:
    void partChanged();

protected:
    void lay() override;
    void paintLit(QPainter& painter) override;
    bool looksSame(const ItemFace& before, const ItemFace& after) const override;
    /// The cover of a record is on its disc.
    ItemPicture pictureWithin() const override;

private:
    Part part_ = Part::Whole;
    QMarginsF bleed_;
};

} // namespace lumaro
