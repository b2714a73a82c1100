// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroCore/Support/WallClock.h"

#include <map>
#include <optional>

namespace lumaro {

/// What is known of the partner right now.
struct BoardPresence {
    bool isPartnerOnline = false;
    Activity activity = Activity::idle;
    std::optional<NowPlaying> nowPlaying;
    Instant nowPlayingHeardAt; ///< by this device's clock
    std::optional<Here> here;
    /// Of each slot's person, as the room has it.
    std::map<PartnerID, CalendarStatus> calendarStatus;
    std::map<PartnerID, CalendarDay> calendar;

    bool operator==(const BoardPresence&) const = default;
};

struct PartnerState {
    BoardPresence presence;
};

/// What this person sees of the partner, from the room's messages. `me` is this device's slot.
class Partner {
public:
    /// All outlive this.
    Partner(WallClock& clock, PartnerState& state, Announcer& announcer)
        : clock_(clock), state_(state), announcer_(announcer) {}
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;
    ~Partner() = default;

    void meet(PartnerSet online, PartnerID me);
    void take(const ServerMessage::Presence& presence, PartnerID me);
    void take(const ServerMessage::Calendar& calendar);
    void forget() { show({}); }

private:
    void show(BoardPresence presence);

    WallClock& clock_;
    PartnerState& state_;
    Announcer& announcer_;
};

} // namespace lumaro
