// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/PositionTry.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace lumaro {
namespace {

// Queued: an answer that is there at once must not come from within the call that asked.
void whenAnswered(const QDBusPendingCall& call, QObject& context, std::function<void(QDBusPendingCall)> then) {
    auto* const watcher = new QDBusPendingCallWatcher{call, &context};
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, &context,
        [watcher, call, then = std::move(then)] {
            watcher->deleteLater();
            then(call);
        },
        Qt::QueuedConnection);
}

std::optional<double> doubleIn(const QVariantMap& properties, const QString& name) {
    const auto value = properties.value(name);
    return value.metaType() == QMetaType::fromType<double>() ? std::optional{value.toDouble()} : std::nullopt;
}

} // namespace

PositionTry::PositionTry(Setup setup) : setup_(std::move(setup)) {
    // A slot with such a parameter cannot be connected before: Qt looks for the type by its name.
    qRegisterMetaType<QDBusObjectPath>();
    leaving_.setConnection(setup_.bus);
    leaving_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(&leaving_, &QDBusServiceWatcher::serviceUnregistered, this,
                     [this] { finish(std::unexpected{TryEnd::serviceLeft}); });
}

QDBusPendingCall PositionTry::ask(const QDBusMessage& call, std::chrono::milliseconds limit,
                                  std::function<void(Reply)> then) {
    // Without a bus, a call that Qt itself would never finish.
    auto pending = setup_.bus.isConnected()
                       ? setup_.bus.asyncCall(call, static_cast<int>(limit.count()))
                       : QDBusPendingCall::fromError(QDBusError{QDBusError::Disconnected, QString{}});
    whenAnswered(pending, *this, std::move(then));
    return pending;
}

void PositionTry::askKeeper(const QDBusPendingCall& call, std::function<void(Reply)> then) {
    whenAnswered(call, setup_.keeper, std::move(then));
}

void PositionTry::hear(const QString& owner) {
    owner_ = owner;
    leaving_.setWatchedServices({owner});
}

// Later, so that whoever hears it may drop the try, whoever it was that finished it.
void PositionTry::finish(Outcome outcome) {
    if (std::exchange(isOver_, true)) return;
    const auto tell = [this, outcome] {
        auto over = std::move(setup_.over);
        over(outcome);
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

RepeatedSearch::RepeatedSearch(Begin begin, std::chrono::milliseconds pause, Then then)
    : begin_(std::move(begin)), then_(std::move(then)) {
    pause_.setSingleShot(true);
    pause_.setInterval(pause);
    QObject::connect(&pause_, &QTimer::timeout, &pause_, [this] { beginTry(); });
    beginTry();
}

void RepeatedSearch::beginTry() {
    current_ = begin_([this](PositionTry::Outcome outcome) { over(outcome); });
}

void RepeatedSearch::over(PositionTry::Outcome outcome) {
    current_.reset();
    if (outcome) {
        answer(*outcome);
    } else if (outcome.error() == TryEnd::nothing) {
        pause_.start();
    } else if (++left_ < maxTries) {
        beginTry();
    } else {
        answer({LocationAccess::restricted, std::nullopt});
    }
}

void RepeatedSearch::answer(PositionSource::Answer answer) {
    // From a local: it may drop this search.
    auto then = std::move(then_);
    then(answer);
}

QDBusMessage propertiesCall(const QString& service, const QString& path, const QString& method,
                            const QVariantList& arguments) {
    auto call =
        QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Properties"), method);
    call.setArguments(arguments);
    return call;
}

std::optional<Coordinates> positionIn(const QVariantMap& properties) {
    const auto latitude = doubleIn(properties, QStringLiteral("Latitude"));
    const auto longitude = doubleIn(properties, QStringLiteral("Longitude"));
    if (!latitude || !longitude) return std::nullopt;
    const Coordinates position{*latitude, *longitude};
    return isOnEarth(position) ? std::optional{position} : std::nullopt;
}

} // namespace lumaro
