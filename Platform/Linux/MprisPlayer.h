// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Platform/Linux/MprisCovers.h"
#include "Platform/Linux/MprisReading.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>

namespace lumaro {

/// One player on the bus. Listens to it, and to nobody else, for as long as it lives. On the main thread.
class MprisPlayer final : public QObject {
    Q_OBJECT

public:
    /// How long a player may take to answer.
    static constexpr std::chrono::milliseconds answerTime{500};

    struct Setup {
        QDBusConnection bus;
        QString owner; ///< the unique name of the player's connection
        MusicSource source;
        MprisCovers& covers; ///< outlives the player; hears of the covers that it says
        /// How long a track may play without a title before it goes by its file's name.
        std::chrono::milliseconds titleTime;
    };
    explicit MprisPlayer(Setup setup);

    MusicSource source() const { return setup_.source; }
    /// Not once it left a question without an answer, until it says something by itself.
    bool mayBeAsked() const { return !isHung_; }
    std::chrono::steady_clock::time_point lastChange() const { return lastChange_; }

    /// Asks what it plays.
    QDBusPendingCall ask() const;
    /// What such a call, which is over, has answered; none when it failed. A track that plays without a title counts as
    /// stopped at first: most players say the title a moment later.
    std::optional<MprisReading> read(const QDBusPendingCall& call);

Q_SIGNALS:
    /// It may say something else now when it is asked.
    void changed();

private Q_SLOTS:
    void propertiesChanged(const QString& interface, const QVariantMap& values, const QStringList& others);
    void seeked();

private:
    void noteChange();
    void waitForTitle(MprisReading& reading);

    Setup setup_;
    bool isHung_ = false;
    std::chrono::steady_clock::time_point lastChange_ = std::chrono::steady_clock::now();
    QTimer titleWait_;
    bool hasWaitedForTitle_ = false;
};

} // namespace lumaro
