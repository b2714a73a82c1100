// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>
#include <QtQuick/QQuickItem>

namespace lumaro {

/// What a screen reader cannot work out by itself, told to it. Does nothing while none listens. On the main thread.
class ScreenReader final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Reads this item as if it had the keyboard focus, which is with the view that it is in. Its `Accessible.focused`
    /// is to say so as well.
    Q_INVOKABLE static void moveTo(QQuickItem* item);
    /// Reads the name of the item without leaving where the person is: one whose role is `Accessible.Notification`.
    Q_INVOKABLE static void say(QQuickItem* item);
};

} // namespace lumaro
