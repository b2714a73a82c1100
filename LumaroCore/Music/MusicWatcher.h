// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Music/ArtworkFetcher.h"
#include "LumaroCore/Music/PlayerNotifications.h"
#include "LumaroCore/Music/RunningPlayers.h"
#include "LumaroCore/Music/ScriptRunner.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/RecentMap.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// Tells what plays on this computer. Asks the players that run when it starts, and again a moment after the last of a
/// burst of changes; never on a timer, and never a player that does not run. Used on one thread; dropping it is its
/// end.
class MusicWatcher {
public:
    /// All outlive the watcher.
    struct Ports {
        ScriptRunner& scriptRunner;
        RunningPlayers& players;
        PlayerNotifications& notifications;
        ArtworkFetcher& artworkFetcher;
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
    };
    /// Hears each publication: none when nothing plays in any running player. It may call the watcher.
    using Updates = std::function<void(const std::optional<NowPlaying>&)>;

    /// What is remembered of covers found and missed, the tracks used last.
    static constexpr std::size_t rememberedTracks = 200;

    MusicWatcher(Ports ports, Seconds debounceSeconds, Updates updates)
        : ports_(ports), debounceSeconds_(debounceSeconds), updates_(std::move(updates)) {}
    MusicWatcher(const MusicWatcher&) = delete;
    MusicWatcher& operator=(const MusicWatcher&) = delete;
    ~MusicWatcher() = default;

    void start();
    /// Publishes nothing any more, not even what is on its way.
    void stop();
    bool isRunning() const { return isRunning_; }

    void scheduleRefresh();
    void refresh();

    /// The last publication.
    const std::optional<NowPlaying>& current() const { return current_; }
    std::optional<std::string> cachedArtwork(std::string_view trackKey) const;
    /// Forgets the covers found, and those not found.
    void clearArtworkCache();

private:
    void ask(std::size_t place);
    void answered(std::size_t place, const ScriptRunner::Answer& answer);
    void publishSamples();
    void publish(std::optional<NowPlaying> playing);
    void lookForArtwork(const MusicSample& sample, Instant at);

    Ports ports_;
    Seconds debounceSeconds_;
    Updates updates_;
    bool isRunning_ = false;
    std::vector<std::unique_ptr<PlayerNotifications::Observer>> observers_;
    std::unique_ptr<Sleeper::Wait> debounceTask_;
    std::uint64_t generation_ = 0; ///< of refreshes; an answer to an earlier one counts no more
    std::optional<NowPlaying> current_;
    /// None for a track that no cover was found for.
    RecentMap<std::string, std::optional<std::string>> artwork_{rememberedTracks};

    // The refresh under way.
    std::vector<MusicSample> samples_;
    std::unique_ptr<ScriptRunner::Run> run_;
    std::unique_ptr<ArtworkFetcher::Search> search_;
};

} // namespace lumaro
