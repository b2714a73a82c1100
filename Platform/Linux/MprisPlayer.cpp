// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/MprisPlayer.h"

#include <QDBusMessage>
#include <QDBusPendingReply>

#include <algorithm>
#include <array>
#include <utility>

namespace lumaro {
namespace {

QString playerPath() {
    return QStringLiteral("/org/mpris/MediaPlayer2");
}
QString playerInterface() {
    return QStringLiteral("org.mpris.MediaPlayer2.Player");
}
QString propertiesInterface() {
    return QStringLiteral("org.freedesktop.DBus.Properties");
}

bool isTimeOut(QDBusError::ErrorType error) {
    return error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
}

} // namespace

// By the name of the connection, so that the bus passes on what this very player says and nothing of others.
MprisPlayer::MprisPlayer(Setup setup) : setup_(std::move(setup)) {
    titleWait_.setSingleShot(true);
    titleWait_.setInterval(setup_.titleTime);
    QObject::connect(&titleWait_, &QTimer::timeout, this, [this] {
        hasWaitedForTitle_ = true;
        Q_EMIT changed();
    });
    setup_.bus.connect(setup_.owner, playerPath(), propertiesInterface(), QStringLiteral("PropertiesChanged"),
                       {playerInterface()}, QStringLiteral("sa{sv}as"), this,
                       SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
    setup_.bus.connect(setup_.owner, playerPath(), playerInterface(), QStringLiteral("Seeked"), this, SLOT(seeked()));
}

QDBusPendingCall MprisPlayer::ask() const {
    auto call =
        QDBusMessage::createMethodCall(setup_.owner, playerPath(), propertiesInterface(), QStringLiteral("GetAll"));
    call.setArguments({playerInterface()});
    call.setAutoStartService(false);
    return setup_.bus.asyncCall(call, static_cast<int>(answerTime.count()));
}

std::optional<MprisReading> MprisPlayer::read(const QDBusPendingCall& call) {
    const QDBusPendingReply<QVariantMap> reply = call;
    if (reply.isError()) {
        isHung_ = isHung_ || isTimeOut(reply.error().type());
        return std::nullopt;
    }
    auto reading = MprisReading::of(reply.value());
    if (!reading) return std::nullopt;
    setup_.covers.put(setup_.source, reading->trackKey, std::exchange(reading->artUrl, {}));
    waitForTitle(*reading);
    return reading;
}

void MprisPlayer::waitForTitle(MprisReading& reading) {
    if (reading.state == PlaybackState::stopped || reading.isTitleSaid) {
        titleWait_.stop();
        hasWaitedForTitle_ = false;
        return;
    }
    if (reading.state == PlaybackState::paused || hasWaitedForTitle_) return;
    if (!titleWait_.isActive()) titleWait_.start();
    reading = MprisReading{};
}

void MprisPlayer::propertiesChanged(const QString& /*interface*/, const QVariantMap& values,
                                    const QStringList& others) {
    const std::array names{QStringLiteral("PlaybackStatus"), QStringLiteral("Metadata"), QStringLiteral("Rate")};
    const bool isOfMusic =
        std::ranges::any_of(names, [&](const auto& name) { return values.contains(name) || others.contains(name); });
    if (isOfMusic || isHung_) noteChange();
}

void MprisPlayer::seeked() {
    noteChange();
}

void MprisPlayer::noteChange() {
    isHung_ = false;
    lastChange_ = std::chrono::steady_clock::now();
    Q_EMIT changed();
}

} // namespace lumaro
