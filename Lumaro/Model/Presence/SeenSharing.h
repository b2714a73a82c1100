// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Presence/BoardMemory.h"
#include "Lumaro/Model/Presence/PresenceSender.h"
#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Support/WallClock.h"

#include <memory>
#include <optional>
#include <string>

namespace lumaro {

struct SeenState {
    bool sharesSeen = false;
};

/// Knows up to which instant the person has seen what their partner put up, and tells the partner that instant if the
/// person said so: never which things, when they were looked at, or how often. A thing counts as seen once it has been
/// on the board in an active window for `glance`.
class SeenSharing {
public:
    static constexpr Seconds glance{3};

    /// All outlive this.
    struct Ports {
        Sleeper& sleeper;
        WallClock& clock;
        UserDefaults& defaults;
    };
    SeenSharing(Ports ports, SeenState& state, PresenceSender& presence, Announcer& announcer);
    SeenSharing(const SeenSharing&) = delete;
    SeenSharing& operator=(const SeenSharing&) = delete;
    ~SeenSharing() = default;

    void enter(const std::string& coupleId);
    void leave();
    /// The board is in a window that the person has before them, or no longer.
    void setLooking(bool isLooking);
    /// What hangs there, as the person in slot `me` sees it.
    void follow(const Board& board, PartnerID me);
    void share(bool shares);

private:
    void look();
    void hasSeen();
    void tell();

    Ports ports_;
    SeenState& state_;
    PresenceSender& presence_;
    Announcer& announcer_;
    BoardMemory memory_;
    std::optional<Instant> newest_; ///< of the partner's items that hang there
    std::optional<Instant> seen_;   ///< everything of theirs until then has been seen
    bool isLooking_ = false;
    std::unique_ptr<Sleeper::Wait> glance_;
};

/// When the newest item of that person was put up, of those that were by `now`: a device whose clock is ahead does not
/// speak for what comes after. None when none hangs there.
std::optional<Instant> newestOf(PartnerID person, const Board& board, Instant now);

} // namespace lumaro
