// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QVariantMap>

namespace lumaro {

/// A music player in the test's own loop, with a connection of its own to the session's bus, that says what the test
/// has it say.
class StandInPlayer final : public QDBusVirtualObject {
public:
    /// Below org.mpris.MediaPlayer2.
    explicit StandInPlayer(const QString& name);
    StandInPlayer(const StandInPlayer&) = delete;
    StandInPlayer& operator=(const StandInPlayer&) = delete;
    /// Its connection is gone, as when a program crashes.
    ~StandInPlayer() override;

    void own(const QString& name);
    void leave(const QString& name);

    /// Sets both, and says so.
    void play(const QString& status, const QVariantMap& metadata);
    void signalChange(const QVariantMap& changed, const QStringList& invalidated = {},
                      const QString& interface = QStringLiteral("org.mpris.MediaPlayer2.Player")) const;
    void signalSeeked(const QVariant& position) const;

    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

    QVariantMap properties;
    bool isHung = false; ///< takes questions and never answers
    int questions = 0;

private:
    QDBusConnection bus_;
};

} // namespace lumaro
