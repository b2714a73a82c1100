// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"

#include <functional>
#include <memory>
#include <optional>

namespace lumaro {

/// Waits for the next note whose time is over.
class ExpiryWatch {
public:
    /// `expired` is called when notes are to come down, a moment after their time. The ports outlive the watch.
    ExpiryWatch(Sleeper& sleeper, WallClock& clock, std::function<void()> expired)
        : sleeper_(sleeper), clock_(clock), expired_(std::move(expired)) {}

    /// The board changed, or the clock may have jumped.
    void watch(const Board& board);
    void stop();

private:
    /// `scheduleExpiry`: from now on nothing else is waited for; none waits for nothing.
    void scheduleExpiry(std::optional<Seconds> after);
    std::optional<Seconds> left() const;

    Sleeper& sleeper_;
    WallClock& clock_;
    std::function<void()> expired_;
    std::optional<Instant> next_;
    std::unique_ptr<Sleeper::Wait> expiryTask_;
};

} // namespace lumaro
