// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/NotificationCenter.h"

#include <QDBusConnection>

#include <memory>
#include <string>

namespace lumaro {

/// Notifications through the desktop's notification daemon (org.freedesktop.Notifications), which the bus starts where
/// it can. Linux asks nobody for permission: it is there when a daemon is.
class DesktopNotifications final : public NotificationCenter {
public:
    explicit DesktopNotifications(QDBusConnection bus = QDBusConnection::sessionBus());
    ~DesktopNotifications() override;

    void post(LocalNotification notification) override;
    [[nodiscard]] std::unique_ptr<Question> permission(Answer then) override;
    [[nodiscard]] std::unique_ptr<Question> askPermission(Answer then) override;

private:
    QDBusConnection bus_;
    // Owns what waits for the daemon.
    std::unique_ptr<QObject> waiting_;
};

} // namespace lumaro
