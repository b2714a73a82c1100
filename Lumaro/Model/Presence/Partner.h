// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Presence/BoardMemory.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroCore/Services/SystemZone.h"
#include "LumaroCore/Support/WallClock.h"

#include <map>
#include <optional>
#include <string>

namespace lumaro {

/// What is known of the partner right now.
struct BoardPresence {
    bool isPartnerOnline = false;
    Activity activity = Activity::idle;
    std::optional<NowPlaying> nowPlaying;
    Instant nowPlayingHeardAt; ///< by this device's clock
    std::optional<Here> here;
    /// The zone that they share without a place, as they said last: kept on this device until they take it back, so
    /// that their time is known while they are away. One that this computer's table has.
    std::optional<std::string> zone;
    /// They have seen what this person put up until then, as far as they ever said; kept as well.
    std::optional<Instant> seen;
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
    struct Ports {
        WallClock& clock;
        UserDefaults& defaults;
        SystemZone& zones;
    };
    Partner(Ports ports, PartnerState& state, Announcer& announcer);
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;
    ~Partner() = default;

    /// What is remembered of them on that board is known again.
    void enter(const std::string& coupleId);
    void meet(PartnerSet online, PartnerID me);
    /// `newestOwn` is when this person's newest item was put up: they can have seen none that comes later.
    void take(const ServerMessage::Presence& presence, PartnerID me, std::optional<Instant> newestOwn);
    void take(const ServerMessage::Calendar& calendar);
    /// Nothing is seen of them any more; what is remembered stays.
    void hide();
    /// They have left the board: what is remembered was theirs.
    void forgetPerson();
    /// The board is left.
    void forget();

private:
    void show(BoardPresence presence);

    void remember(const ServerMessage::Presence& presence, std::optional<Instant> newestOwn, BoardPresence& seen);

    Ports ports_;
    PartnerState& state_;
    Announcer& announcer_;
    BoardMemory zone_;
    BoardMemory seen_;
};

} // namespace lumaro
