// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <functional>
#include <memory>

namespace lumaro {

/// Says when something about a player's music changes. Listens only while somebody observes. On the main thread.
class PlayerNotifications {
public:
    /// Dropping it ends the observing.
    class Observer {
    public:
        Observer() = default;
        Observer(const Observer&) = delete;
        Observer& operator=(const Observer&) = delete;
        virtual ~Observer() = default;
    };

    PlayerNotifications() = default;
    PlayerNotifications(const PlayerNotifications&) = delete;
    PlayerNotifications& operator=(const PlayerNotifications&) = delete;
    virtual ~PlayerNotifications() = default;

    /// `changed` is called from the event loop, never from within this call, for each change: also when the player
    /// comes or goes. It may drop its own observer.
    [[nodiscard]] virtual std::unique_ptr<Observer> observe(MusicSource source, std::function<void()> changed) = 0;
};

} // namespace lumaro
