// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Editor/CutOutSession.h"

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickPaintedItem>

namespace lumaro {

/// The picture under the scissors: what goes is dimmed, and the edge is drawn.
class CutOutSheet : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(lumaro::CutOutSession* session READ session WRITE setSession NOTIFY sessionChanged REQUIRED)

public:
    explicit CutOutSheet(QQuickItem* parent = nullptr);

    CutOutSession* session() const { return session_; }
    void setSession(CutOutSession* session);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void sessionChanged();

private:
    CutOutSession* session_ = nullptr;
};

} // namespace lumaro
