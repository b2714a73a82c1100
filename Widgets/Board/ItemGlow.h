// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Board/FacePicture.h"

namespace lumaro {

/// Warm light around an item, in the item's own shape: strongest at its edge, nothing at `reach` from it. Lay it out so
/// that the paper's corner is at (`reach`, `reach`).
class ItemGlow : public lumaro::FacePicture {
    Q_OBJECT
    QML_ELEMENT
    /// In whole pixels of the view.
    Q_PROPERTY(double reach READ reach NOTIFY placeChanged)

public:
    using FacePicture::FacePicture;

    double reach() const { return reach_; }

protected:
    void lay() override;
    void paintLit(QPainter& painter) override;

private:
    double reach_ = 0;
};

} // namespace lumaro
