// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/PenArea.h"

#include <QtGui/QCursor>
#include <QtGui/QTabletEvent>
#include <QtQuick/QQuickWindow>

#include <utility>

namespace lumaro {
namespace {

double secondsOf(const QMouseEvent& event) {
    return static_cast<double>(event.timestamp()) / 1000;
}

} // namespace

PenArea::PenArea(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setCursor(Qt::CrossCursor);
}

void PenArea::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange) {
        if (window() != nullptr) window()->removeEventFilter(this);
        if (data.window != nullptr) data.window->installEventFilter(this);
    }
    QQuickItem::itemChange(change, data);
}

bool PenArea::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::TabletPress:
    case QEvent::TabletMove: pressure_ = static_cast<QTabletEvent*>(event)->pressure(); break;
    case QEvent::TabletRelease: pressure_ = -1; break;
    default: break;
    }
    return QQuickItem::eventFilter(watched, event);
}

void PenArea::mousePressEvent(QMouseEvent* event) {
    isDown_ = true;
    Q_EMIT pressed(event->position(), secondsOf(*event), pressure_);
}

void PenArea::mouseMoveEvent(QMouseEvent* event) {
    Q_EMIT moved(event->position(), secondsOf(*event), pressure_);
}

void PenArea::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (std::exchange(isDown_, false)) Q_EMIT released();
}

void PenArea::mouseUngrabEvent() {
    if (std::exchange(isDown_, false)) Q_EMIT released();
}

} // namespace lumaro
