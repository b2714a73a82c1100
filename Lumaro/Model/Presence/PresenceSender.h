// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Room/Connection.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroCore/Support/Sleeper.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {

/// What the partner sees of this person.
struct OwnPresenceState {
    OwnPresence ownPresence;
};

/// Puts together what the partner sees of this person, and sends it a quarter of a second after the last change.
class PresenceSender {
public:
    static constexpr Seconds pause{0.25};

    /// All outlive this.
    PresenceSender(Sleeper& sleeper, OwnPresenceState& state, Connection& connection, Announcer& announcer)
        : sleeper_(sleeper), state_(state), connection_(connection), announcer_(announcer) {}
    PresenceSender(const PresenceSender&) = delete;
    PresenceSender& operator=(const PresenceSender&) = delete;
    ~PresenceSender() = default;

    const std::optional<NowPlaying>& music() const { return state_.ownPresence.nowPlaying; }
    void setMusic(std::optional<NowPlaying> music) { set(state_.ownPresence.nowPlaying, std::move(music)); }
    void setPlace(std::optional<Here> place) { set(state_.ownPresence.here, std::move(place)); }
    void setZone(std::optional<std::string> zone) { set(state_.ownPresence.zone, std::move(zone)); }
    void setSeen(std::optional<Instant> seen) { set(state_.ownPresence.seen, seen); }
    void setActivity(Activity activity) { set(state_.ownPresence.activity, activity); }
    /// The room does not know it yet.
    void sendSoon();
    void stop() { presenceCoalesceTask_.reset(); }

private:
    template <class Value>
    void set(Value& held, Value value) {
        if (held == value) return;
        held = std::move(value);
        announcer_.changed(AppChange::ownPresence);
        sendSoon();
    }

    Sleeper& sleeper_;
    OwnPresenceState& state_;
    Connection& connection_;
    Announcer& announcer_;
    std::unique_ptr<Sleeper::Wait> presenceCoalesceTask_;
};

} // namespace lumaro
