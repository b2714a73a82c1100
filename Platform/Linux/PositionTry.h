// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Location/PositionSource.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>
#include <QVariantList>
#include <QVariantMap>

#include <chrono>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>

namespace lumaro {

/// How long a service may take for one answer.
struct PositionLimits {
    std::chrono::milliseconds service{30'000}; ///< by itself; at login it may wait for the rest of the desktop
    std::chrono::milliseconds person{600'000}; ///< when it may ask the person first
    std::chrono::milliseconds pause{300'000};  ///< until one that has given up is asked again
};

/// Why a try ended without an answer.
enum class TryEnd : std::uint8_t {
    serviceLeft, ///< it may be back at once
    nothing,     ///< the service gave up, for now
};

/// One try to learn the position from one run of a service: it hears the process that answered first and nobody else.
/// Dropping it, at any moment, ends it and gives back what the service made for it. On the main thread.
class PositionTry : public QObject {
public:
    using Outcome = std::expected<PositionSource::Answer, TryEnd>;
    using Over = std::move_only_function<void(Outcome)>;

    struct Setup {
        QDBusConnection bus;
        PositionLimits limits;
        QObject& keeper; ///< outlives the try; owns what waits for something that must still be given back
        Over over;       ///< told once, from the event loop; may drop the try
    };

    explicit PositionTry(Setup setup);

protected:
    using Reply = QDBusPendingCall;

    QDBusConnection& bus() { return setup_.bus; }
    const PositionLimits& limits() const { return setup_.limits; }
    /// The connection that `hear` was told of; empty before that.
    const QString& owner() const { return owner_; }

    /// `then` is told from the event loop, while the try lives, what came or why nothing did.
    QDBusPendingCall ask(const QDBusMessage& call, std::chrono::milliseconds limit, std::function<void(Reply)> then);
    /// The same for an answer that is waited for when the try is dropped; without `this`.
    void askKeeper(const QDBusPendingCall& call, std::function<void(Reply)> then);
    /// From now on it is this connection, by its unique name, that is spoken with.
    void hear(const QString& owner);
    /// Only the first one counts.
    void finish(Outcome outcome);
    void finish(LocationAccess access) { finish(PositionSource::Answer{access, std::nullopt}); }
    void finish(Coordinates position) { finish(PositionSource::Answer{LocationAccess::authorized, position}); }

private:
    Setup setup_;
    QString owner_;
    QDBusServiceWatcher leaving_;
    bool isOver_ = false;
};

/// A search that tries again: at once when the service leaves in the middle, for one that is being updated comes back,
/// and after a pause when it gives up.
class RepeatedSearch final : public PositionSource::Search {
public:
    /// A service that has left so many times counts as `restricted`.
    static constexpr int maxTries = 3;

    using Begin = std::function<std::unique_ptr<PositionTry>(PositionTry::Over)>;
    using Then = std::move_only_function<void(PositionSource::Answer)>;
    RepeatedSearch(Begin begin, std::chrono::milliseconds pause, Then then);

private:
    void beginTry();
    void over(PositionTry::Outcome outcome);
    void answer(PositionSource::Answer answer);

    Begin begin_;
    Then then_;
    int left_ = 0; ///< how often the service did
    std::unique_ptr<PositionTry> current_;
    QTimer pause_;
};

/// A call of org.freedesktop.DBus.Properties: "Get", "GetAll" or "Set".
QDBusMessage propertiesCall(const QString& service, const QString& path, const QString& method,
                            const QVariantList& arguments);

/// What the properties "Latitude" and "Longitude" say; none when one is missing, is no double, or is not on earth.
std::optional<Coordinates> positionIn(const QVariantMap& properties);

} // namespace lumaro
