// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <functional>
#include <memory>
#include <set>

namespace lumaro {

/// Rings when a phase of a block card ends that this person takes part in.
///
/// Each end rings once, however many cards share it and however often the clock is set. Only phases that were seen
/// running ring. Where the machine slept over an end, it rings on waking if that is within the hour in which the card
/// itself rings (`Pomodoro::ringingSpan`), and not at all later. A clock that is set while the machine is awake is
/// noticed within a minute, or at the next `watch`.
class BlockBell {
public:
    /// `ring` is called with the end that has come. The ports outlive the bell.
    BlockBell(Sleeper& sleeper, WallClock& clock, std::function<void(Instant end)> ring)
        : sleeper_(sleeper), clock_(clock), ring_(std::move(ring)) {}

    /// The board changed, or the clock may have jumped.
    void watch(const Board& board, PartnerID slot);
    void stop();

private:
    void ringDue();
    void waitForNext();

    Sleeper& sleeper_;
    WallClock& clock_;
    std::function<void(Instant)> ring_;
    // Of cards on the board, at most one end each.
    std::set<Instant> awaited_;
    std::set<Instant> past_; ///< ends that have rung, or were too old to ring
    std::unique_ptr<Sleeper::Wait> wait_;
};

} // namespace lumaro
