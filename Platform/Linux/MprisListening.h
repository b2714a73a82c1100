// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Platform/Linux/MprisNames.h"
#include "Platform/Linux/MprisPlayer.h"

#include <QDBusServiceWatcher>

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace lumaro {

/// Finds the players of a bus and follows them as they come and go, for as long as it lives. The bus tells it of
/// players' names only. On the main thread.
class MprisListening {
public:
    /// Players that are followed; more are as if they were not there.
    static constexpr std::size_t maxPlayers = 32;
    /// Names of players that are known, counting or not: several for each player.
    static constexpr std::size_t maxNames = 256;

    struct Setup {
        QDBusConnection bus;
        MprisCovers& covers; ///< outlives the listening
        std::chrono::milliseconds titleTime;
        bool includesBrowsers;
        std::function<void(MusicSource)> changed; ///< must not end the listening at once
    };
    explicit MprisListening(Setup setup);

    void setIncludesBrowsers(bool includes);
    bool hasPlayer(MusicSource source) const;
    std::vector<MprisPlayer*> players(MusicSource source) const;

private:
    void findNames();
    void askOwner(const QString& name);
    void setOwner(const QString& name, const QString& owner);
    void followPlayers();
    std::unique_ptr<MprisPlayer> newPlayer(const QString& owner, MusicSource source);

    Setup setup_;
    MprisNames::Owners owners_;
    std::map<QString, std::unique_ptr<MprisPlayer>> players_; ///< by their connections
    QDBusServiceWatcher watcher_;                             ///< owns what waits for the bus
};

} // namespace lumaro
