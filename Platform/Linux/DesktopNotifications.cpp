// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/DesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QUrl>
#include <QVariantMap>

#include <algorithm>
#include <deque>
#include <optional>
#include <string>
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

// No question for a daemon may keep those behind it waiting for longer.
constexpr int patienceMs = 5'000;
// What waits for a daemon that does not answer; of more, the oldest are dropped.
constexpr std::size_t mostWaiting = 16;
// Notifications whose answers are heard; those that were shown before them are forgotten.
constexpr std::size_t mostHeard = 32;

const auto openAction = QStringLiteral("default");

QStringList actionsOf(const LocalNotification& notification) {
    if (notification.about.empty()) return {};
    QStringList actions{openAction, QStringLiteral("open")};
    for (const auto& action : notification.actions) {
        actions << QString::fromStdString(action.name) << QString::fromStdString(action.label);
    }
    return actions;
}

QDBusMessage notifyCall(const LocalNotification& notification, const QStringList& capabilities, uint replaced) {
    const auto body = QString::fromStdString(notification.body);
    const bool readsMarkup = capabilities.contains(QStringLiteral("body-markup"));
    const bool hasActions = capabilities.contains(QStringLiteral("actions"));
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("app.lumaro.Lumaro")}};
    if (notification.picturePath) {
        const auto picture = QUrl::fromLocalFile(QString::fromStdString(*notification.picturePath));
        hints.insert(QStringLiteral("image-path"), QString::fromLatin1(picture.toEncoded()));
    }
    auto call = callOf(QStringLiteral("Notify"));
    // The daemon knows best how long it stays.
    call.setArguments({QStringLiteral("Lumaro"), replaced, QStringLiteral("app.lumaro.Lumaro"),
                       QString::fromStdString(notification.title), readsMarkup ? body.toHtmlEscaped() : body,
                       hasActions ? actionsOf(notification) : QStringList{}, hints, -1});
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

// Shows one after the other, as the number of one is needed to put another in its place.
class DesktopNotifications::Daemon final : public QObject {
    Q_OBJECT

public:
    explicit Daemon(QDBusConnection bus) : bus_(std::move(bus)) {
        hear(QStringLiteral("ActionInvoked"), SLOT(acted(uint, QString, QDBusMessage)));
        hear(QStringLiteral("NotificationClosed"), SLOT(closed(uint, uint, QDBusMessage)));
    }

    void post(LocalNotification notification) {
        if (!notification.about.empty()) {
            std::erase_if(waiting_, [&](const auto& other) { return other.about == notification.about; });
        }
        if (waiting_.size() == mostWaiting) waiting_.pop_front();
        waiting_.push_back(std::move(notification));
        if (!isAsking_) askWhatItCan();
    }

    void withdraw(std::string_view about) {
        std::erase_if(waiting_, [&](const auto& other) { return other.about == about; });
        if (const auto id = idOf(about)) {
            auto call = callOf(QStringLiteral("CloseNotification"));
            call.setArguments({*id});
            if (bus_.isConnected()) bus_.send(call);
            forget(*id);
        }
        // One that is on its way has no number yet.
        if (shownNow_ && shownNow_->about == about) isShownNowWithdrawn_ = true;
    }

    NotificationCenter::Listener listener;

private Q_SLOTS:
    void acted(uint id, const QString& action, const QDBusMessage& signal) {
        const auto about = aboutOf(id, signal);
        if (!about) return;
        using Kind = NotificationAnswer::Kind;
        const bool isOpened = action == openAction;
        tell({isOpened ? Kind::opened : Kind::acted, *about, isOpened ? std::string{} : action.toStdString()});
    }
    void closed(uint id, uint reason, const QDBusMessage& signal) {
        constexpr uint byThePerson = 2;
        const auto about = aboutOf(id, signal);
        if (!about) return;
        // One that has only expired is in many a daemon's list yet, and opens from there.
        if (reason != byThePerson) return;
        forget(id);
        tell({NotificationAnswer::Kind::dismissed, *about});
    }

private:
    struct Shown {
        uint id = 0;
        std::string about;
    };

    void hear(const QString& signal, const char* slot) {
        bus_.connect(QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("/org/freedesktop/Notifications"),
                     QStringLiteral("org.freedesktop.Notifications"), signal, this, slot);
    }

    // Asked each time what it can do: the daemon may be another than at the last one.
    void askWhatItCan() {
        isAsking_ = true;
        ask(callOf(QStringLiteral("GetCapabilities")), [this](const QDBusMessage& answer) {
            const bool isThere = answer.type() == QDBusMessage::ReplyMessage;
            if (!isThere) waiting_.clear();
            if (waiting_.empty()) {
                isAsking_ = false;
                return;
            }
            if (answer.service() != name_) shown_.clear();
            name_ = answer.service();
            show(answer.arguments().value(0).toStringList());
        });
    }

    void show(const QStringList& capabilities) {
        shownNow_ = std::move(waiting_.front());
        waiting_.pop_front();
        isShownNowWithdrawn_ = false;
        const auto& about = shownNow_->about;
        ask(notifyCall(*shownNow_, capabilities, idOf(about).value_or(0)), [this](const QDBusMessage& answer) {
            const auto id = answer.arguments().value(0).toUInt();
            if (answer.type() == QDBusMessage::ReplyMessage && id > 0) isShown(id);
            shownNow_.reset();
            waiting_.empty() ? void(isAsking_ = false) : askWhatItCan();
        });
    }

    void isShown(uint id) {
        const auto about = shownNow_->about;
        if (about.empty()) return;
        std::erase_if(shown_, [&](const Shown& one) { return one.id == id || one.about == about; });
        if (shown_.size() == mostHeard) shown_.pop_front();
        shown_.push_back({id, about});
        if (isShownNowWithdrawn_) withdraw(about);
    }

    template <class Then>
    void ask(const QDBusMessage& call, Then then) {
        // Without a bus, a call that Qt itself would never finish.
        const auto pending = bus_.isConnected()
                                 ? bus_.asyncCall(call, patienceMs)
                                 : QDBusPendingCall::fromError(QDBusError{QDBusError::Disconnected, QString{}});
        auto* const watcher = new QDBusPendingCallWatcher{pending, this};
        QObject::connect(
            watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, then = std::move(then)] {
                watcher->deleteLater();
                then(watcher->reply());
            },
            Qt::QueuedConnection);
    }

    std::optional<uint> idOf(std::string_view about) const {
        const auto shown = std::ranges::find(shown_, about, &Shown::about);
        return about.empty() || shown == shown_.end() ? std::nullopt : std::optional{shown->id};
    }
    // None of a notification that is not this program's, and of a signal that another sends than the daemon.
    std::optional<std::string> aboutOf(uint id, const QDBusMessage& signal) const {
        const auto shown = std::ranges::find(shown_, id, &Shown::id);
        return signal.service() != name_ || shown == shown_.end() ? std::nullopt : std::optional{shown->about};
    }
    void forget(uint id) {
        std::erase_if(shown_, [&](const Shown& one) { return one.id == id; });
    }
    void tell(const NotificationAnswer& answer) const {
        // A copy: the listener may set another.
        const auto to = listener;
        if (to) to(answer);
    }

    QDBusConnection bus_;
    std::deque<LocalNotification> waiting_;
    std::deque<Shown> shown_; ///< the oldest first
    std::optional<LocalNotification> shownNow_;
    bool isShownNowWithdrawn_ = false;
    bool isAsking_ = false;
    QString name_; ///< of the daemon's own connection
};

DesktopNotifications::DesktopNotifications(QDBusConnection bus)
    : bus_(std::move(bus)), daemon_(std::make_unique<Daemon>(bus_)) {
}

DesktopNotifications::~DesktopNotifications() = default;

void DesktopNotifications::post(LocalNotification notification) {
    daemon_->post(std::move(notification));
}

void DesktopNotifications::withdraw(std::string_view about) {
    daemon_->withdraw(about);
}

void DesktopNotifications::onAnswer(Listener listener) {
    daemon_->listener = std::move(listener);
}

std::unique_ptr<NotificationCenter::Question> DesktopNotifications::permission(Answer then) {
    return std::make_unique<PermissionQuestion>(bus_, std::move(then));
}

std::unique_ptr<NotificationCenter::Question> DesktopNotifications::askPermission(Answer then) {
    return permission(std::move(then));
}

} // namespace lumaro

#include "Platform/Linux/DesktopNotifications.moc"
