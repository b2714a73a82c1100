// SPDX-License-Identifier: Apache-2.0
#include "Tests/Platform/Linux/StandInPlayer.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

const auto path = QStringLiteral("/org/mpris/MediaPlayer2");
const auto root = QStringLiteral("org.mpris.MediaPlayer2.");

QDBusConnection newConnection() {
    static int count = 0;
    return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                         QStringLiteral("player-%1").arg(++count));
}

} // namespace

StandInPlayer::StandInPlayer(const QString& name) : bus_(newConnection()) {
    EXPECT_TRUE(bus_.registerVirtualObject(path, this));
    own(name);
}

StandInPlayer::~StandInPlayer() {
    QDBusConnection::disconnectFromBus(bus_.name());
}

void StandInPlayer::own(const QString& name) {
    EXPECT_TRUE(bus_.registerService(root + name));
}

void StandInPlayer::leave(const QString& name) {
    EXPECT_TRUE(bus_.unregisterService(root + name));
}

void StandInPlayer::play(const QString& status, const QVariantMap& metadata) {
    properties.insert(QStringLiteral("PlaybackStatus"), status);
    properties.insert(QStringLiteral("Metadata"), metadata);
    signalChange(properties);
}

void StandInPlayer::signalChange(const QVariantMap& changed, const QStringList& invalidated,
                                 const QString& interface) const {
    auto signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                             QStringLiteral("PropertiesChanged"));
    signal.setArguments({interface, changed, invalidated});
    EXPECT_TRUE(bus_.send(signal));
}

void StandInPlayer::signalSeeked(const QVariant& position) const {
    auto signal = QDBusMessage::createSignal(path, root + QStringLiteral("Player"), QStringLiteral("Seeked"));
    signal.setArguments({position});
    EXPECT_TRUE(bus_.send(signal));
}

bool StandInPlayer::handleMessage(const QDBusMessage& message, const QDBusConnection& bus) {
    if (message.member() != QStringLiteral("GetAll")) return false;
    ++questions;
    message.setDelayedReply(true);
    return isHung || bus.send(message.createReply(QVariant{properties}));
}

} // namespace lumaro
