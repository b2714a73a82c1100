// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Widgets/Picture/PictureItem.h"

#include <QtQml/qqmlregistration.h>

namespace lumaro {

/// The red thread between two homes: it hangs across the item's width, which is meant to be the board's, once it is
/// `tied`. `progress` draws it, 0 to 1.
// The tools of QML look for the base by its whole name.
class RedThread : public lumaro::PictureItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool tied READ isTied WRITE setTied NOTIFY changed)
    Q_PROPERTY(double progress READ progress WRITE setProgress NOTIFY changed)
    Q_PROPERTY(double pointScale READ pointScale WRITE setPointScale NOTIFY changed)

public:
    using PictureItem::PictureItem;

    bool isTied() const { return isTied_; }
    void setTied(bool isTied);
    double progress() const { return progress_; }
    void setProgress(double progress);
    /// Pixels of the view for a point of the canvas.
    double pointScale() const { return pointScale_; }
    void setPointScale(double scale);

    void paint(QPainter& painter) override;

Q_SIGNALS:
    void changed();

private:
    template <class Value>
    void set(Value& place, Value value);

    bool isTied_ = false;
    double progress_ = 1;
    double pointScale_ = 1;
};

} // namespace lumaro
