// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// A lasso on the glass: a thread in stitches around a breath of its colour.
class LassoLine : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit LassoLine(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
};

} // namespace lumaro
