// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/NotificationCenter.h"

#include <QDBusConnection>

#include <memory>
#include <string_view>

namespace lumaro {

/// Notifications through the desktop's notification daemon (org.freedesktop.Notifications), which the bus starts where
/// it can. Linux asks nobody for permission: it is there when a daemon is. Answers are taken from the daemon that shows
/// the notification alone.
class DesktopNotifications final : public NotificationCenter {
public:
    explicit DesktopNotifications(QDBusConnection bus = QDBusConnection::sessionBus());
    ~DesktopNotifications() override;

    void post(LocalNotification notification) override;
    void withdraw(std::string_view about) override;
    void onAnswer(Listener listener) override;
    [[nodiscard]] std::unique_ptr<Question> permission(Answer then) override;
    [[nodiscard]] std::unique_ptr<Question> askPermission(Answer then) override;

private:
    class Daemon;

    QDBusConnection bus_;
    std::unique_ptr<Daemon> daemon_;
};

} // namespace lumaro
