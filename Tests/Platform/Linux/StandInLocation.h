// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <vector>

namespace lumaro {

/// A service that knows where the computer is, in the test's own loop with a connection of its own, that does what the
/// test has it do. It stands in line for its name when another has it.
class StandInLocation : public QDBusVirtualObject {
public:
    StandInLocation(const StandInLocation&) = delete;
    StandInLocation& operator=(const StandInLocation&) = delete;
    /// Its connection is gone, as when a program crashes.
    ~StandInLocation() override;

    /// Says to everybody who has started that the computer is there.
    virtual void locate(const QVariantMap& properties) = 0;
    void locate(const QVariant& latitude, const QVariant& longitude);
    /// Answers the calls that were held, the oldest first, and holds no more.
    void release();

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

    QString held;                         ///< the method whose calls get no answer for now
    std::map<QString, QString> refusals;  ///< the errors by which methods fail
    std::map<QString, QVariant> nonsense; ///< what methods answer instead of what they should
    QStringList calls;                    ///< what was called, in a few words
    std::map<QString, QString> open;      ///< what was made for a caller and not given back, with the caller

protected:
    StandInLocation(const QString& name, const QString& root);

    virtual QVariant answerTo(const QDBusMessage& message) = 0;
    void signal(const QString& to, const QString& path, const QString& interface, const QString& member,
                const QVariantList& arguments) const;

private:
    void answer(const QDBusMessage& message);

    QDBusConnection bus_;
    std::vector<QDBusMessage> waiting_;
};

/// GeoClue. Its clients are open until they are deleted.
class StandInGeoClue final : public StandInLocation {
public:
    StandInGeoClue();

    using StandInLocation::locate;
    void locate(const QVariantMap& properties) override;
    /// To one client, of a location with this path.
    void update(const QString& client, const QString& location) const;

    QVariant level = 8U;
    QStringList active; ///< clients that have started and not stopped

private:
    QVariant answerTo(const QDBusMessage& message) override;

    int clients_ = 0;
    std::vector<QVariantMap> locations_;
};

/// The desktop's portal. Its sessions are open until they are closed.
class StandInPortal final : public StandInLocation {
public:
    StandInPortal();

    using StandInLocation::locate;
    void locate(const QVariantMap& properties) override;
    /// To one caller, of any session.
    void update(const QString& to, const QString& session, const QVariantMap& properties) const;

    /// Whether a session may hear of the position.
    bool hasStarted() const { return !started_.isEmpty(); }
    /// Ends the session that has started, and says so to its owner.
    void endSession();

    int response = 0; ///< to the question of whether a program may know; -1 leaves it open

private:
    QVariant answerTo(const QDBusMessage& message) override;
    void respond(const QDBusMessage& start);

    QStringList started_;
};

} // namespace lumaro
