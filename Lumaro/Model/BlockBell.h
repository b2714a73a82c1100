// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <functional>
#include <memory>
#include <optional>

namespace lumaro {

/// Rings when a phase of a block card ends that this person takes part in: once for each end, and only for phases that
/// were seen running.
class BlockBell {
public:
    /// `ring` is called with the end that has come. The ports outlive the bell.
    BlockBell(Sleeper& sleeper, WallClock& clock, std::function<void(Instant end)> ring)
        : sleeper_(sleeper), clock_(clock), ring_(std::move(ring)) {}

    /// The board changed, or the clock may have jumped.
    void watch(const Board& board, PartnerID slot);
    void stop();

private:
    void look();

    Sleeper& sleeper_;
    WallClock& clock_;
    std::function<void(Instant)> ring_;
    std::optional<Instant> awaited_;
    std::unique_ptr<Sleeper::Wait> wait_;
};

} // namespace lumaro
