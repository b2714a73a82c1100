// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace lumaro {

/// Where a pen draws: it tells each place that the pointer comes to with the time of its event, and with the pressure
/// when the pointer is a tablet's pen. Pointer handlers of QML hear what other items have taken, too; this does not.
class PenArea : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit PenArea(QQuickItem* parent = nullptr);

Q_SIGNALS:
    /// Seconds are from any beginning, the same for one line. The pressure is from 0 to 1, or -1 when none is told.
    void pressed(QPointF place, double seconds, double pressure);
    void moved(QPointF place, double seconds, double pressure);
    void released();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseUngrabEvent() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    /// Of the window: what a tablet tells comes before the pointer's event that is made of it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    double pressure_ = -1;
    bool isDown_ = false;
};

} // namespace lumaro
