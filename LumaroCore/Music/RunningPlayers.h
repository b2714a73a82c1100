// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

namespace lumaro {

/// The music players that run on this computer. On the main thread.
class RunningPlayers {
public:
    RunningPlayers() = default;
    RunningPlayers(const RunningPlayers&) = delete;
    RunningPlayers& operator=(const RunningPlayers&) = delete;
    virtual ~RunningPlayers() = default;

    virtual bool isRunning(MusicSource source) = 0;
    /// Whether a browser counts as a player. It does not unless switched on: what it plays may be a film or a meeting.
    virtual void setIncludesBrowsers(bool includes) = 0;
};

} // namespace lumaro
