// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/PlayerArtwork.h"
#include "LumaroCore/Music/PlayerNotifications.h"
#include "LumaroCore/Music/RunningPlayers.h"
#include "LumaroCore/Music/ScriptRunner.h"
#include "Platform/Linux/MprisCovers.h"

#include <QDBusConnection>

#include <chrono>
#include <memory>
#include <vector>

namespace lumaro {

class MprisListening;

/// The music players on the session's bus (MPRIS). The one of Spotify's name is `spotify`, every other one is taken for
/// `appleMusic`; of a script only that matters, for which of the two it is. While nobody observes, nothing is listened
/// to and no player is known. Outlives its observers and runs.
class MprisPlayers final : public ScriptRunner,
                           public RunningPlayers,
                           public PlayerNotifications,
                           public PlayerArtwork {
public:
    /// How long a track may play without a title before it goes by its file's name: many players say the title a
    /// moment later.
    static constexpr std::chrono::seconds titleTime{2};

    explicit MprisPlayers(QDBusConnection bus = QDBusConnection::sessionBus(),
                          std::chrono::milliseconds longestWithoutTitle = titleTime);
    ~MprisPlayers() override;

    /// Asks every player of that source at once. One that does not answer within half a second is left out, also of
    /// later runs, until it says something by itself.
    [[nodiscard]] std::unique_ptr<Run> run(std::string_view source,
                                           std::move_only_function<void(Answer)> then) override;
    bool isRunning(MusicSource source) override;
    void setIncludesBrowsers(bool includes) override;
    [[nodiscard]] std::unique_ptr<Observer> observe(MusicSource source, std::function<void()> changed) override;
    std::optional<std::string> artworkOf(MusicSource source, std::string_view trackKey) override;

private:
    class Observing;

    void listen();
    void tell(MusicSource source);
    void drop(Observing& observing);

    QDBusConnection bus_;
    std::chrono::milliseconds longestWithoutTitle_;
    bool includesBrowsers_ = false;
    MprisCovers covers_;
    std::unique_ptr<MprisListening> listening_;
    std::vector<Observing*> observers_;
};

} // namespace lumaro
