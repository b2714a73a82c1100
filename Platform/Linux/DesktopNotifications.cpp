// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUrl>
#include <QVariantMap>

#include <utility>

namespace lumaro {
namespace {

QDBusMessage callOf(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.Notifications"),
                                          QStringLiteral("/org/freedesktop/Notifications"),
                                          QStringLiteral("org.freedesktop.Notifications"), method);
}

// Without a bus, a call that Qt itself would never finish.
QDBusPendingCall asked(const QDBusConnection& bus, const QString& method) {
    if (!bus.isConnected()) return QDBusPendingCall::fromError(QDBusError{QDBusError::Disconnected, QString{}});
    return bus.asyncCall(callOf(method));
}

QDBusMessage notifyCall(const LocalNotification& notification, bool readsMarkup) {
    const auto body = QString::fromStdString(notification.body);
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("app.lumaro.Lumaro")}};
    if (notification.picturePath) {
        const auto picture = QUrl::fromLocalFile(QString::fromStdString(*notification.picturePath));
        hints.insert(QStringLiteral("image-path"), QString::fromLatin1(picture.toEncoded()));
    }
    auto call = callOf(QStringLiteral("Notify"));
    // No notification takes the place of another, none has actions, and the daemon knows best how long it stays.
    call.setArguments({QStringLiteral("Lumaro"), 0U, QStringLiteral("app.lumaro.Lumaro"),
                       QString::fromStdString(notification.title), readsMarkup ? body.toHtmlEscaped() : body,
                       QStringList{}, hints, -1});
    return call;
}

class PermissionQuestion final : public NotificationCenter::Question {
public:
    PermissionQuestion(const QDBusConnection& bus, NotificationCenter::Answer then)
        : then_(std::move(then)), watcher_(asked(bus, QStringLiteral("GetServerInformation"))) {
        // Queued: without a bus the answer is there at once.
        QObject::connect(
            &watcher_, &QDBusPendingCallWatcher::finished, &watcher_, [this] { finish(); }, Qt::QueuedConnection);
    }

private:
    void finish() {
        // From a local: it may drop this question.
        auto then = std::move(then_);
        then(watcher_.isError() ? NotificationPermission::denied : NotificationPermission::authorized);
    }

    NotificationCenter::Answer then_;
    QDBusPendingCallWatcher watcher_;
};

} // namespace

DesktopNotifications::DesktopNotifications(QDBusConnection bus)
    : bus_(std::move(bus)), waiting_(std::make_unique<QObject>()) {
}

DesktopNotifications::~DesktopNotifications() = default;

// Asked each time what it can do: the daemon may be another than at the last one. The bus keeps the order.
void DesktopNotifications::post(LocalNotification notification) {
    auto* const watcher = new QDBusPendingCallWatcher{asked(bus_, QStringLiteral("GetCapabilities")), waiting_.get()};
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, waiting_.get(),
                     [this, watcher, notification = std::move(notification)] {
                         const QDBusPendingReply<QStringList> capabilities = *watcher;
                         watcher->deleteLater();
                         if (capabilities.isError()) return;
                         const bool readsMarkup = capabilities.value().contains(QStringLiteral("body-markup"));
                         bus_.send(notifyCall(notification, readsMarkup));
                     });
}

std::unique_ptr<NotificationCenter::Question> DesktopNotifications::permission(Answer then) {
    return std::make_unique<PermissionQuestion>(bus_, std::move(then));
}

std::unique_ptr<NotificationCenter::Question> DesktopNotifications::askPermission(Answer then) {
    return permission(std::move(then));
}

} // namespace lumaro
