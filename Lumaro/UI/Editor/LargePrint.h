// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/LargeView.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// The pixels of the picture that is seen large.
class LargePrint : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::LargeView* view READ view WRITE setView NOTIFY viewChanged REQUIRED)

public:
    explicit LargePrint(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent) {}

    LargeView* view() const { return view_; }
    void setView(LargeView* view);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void viewChanged();

private:
    LargeView* view_ = nullptr;
};

} // namespace lumaro
