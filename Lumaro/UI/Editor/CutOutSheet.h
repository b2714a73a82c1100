// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/CutOutDesk.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// The picture under the scissors: what goes is dimmed, and the edge is drawn.
class CutOutSheet : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::CutOutDesk* desk READ desk WRITE setDesk NOTIFY deskChanged REQUIRED)

public:
    explicit CutOutSheet(QQuickItem* parent = nullptr);

    CutOutDesk* desk() const { return desk_; }
    void setDesk(CutOutDesk* desk);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void deskChanged();

private:
    CutOutDesk* desk_ = nullptr;
};

} // namespace lumaro
