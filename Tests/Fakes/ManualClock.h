// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/WallClock.h"
#include "Tests/Fakes/ManualSleeper.h"

namespace lumaro {

/// A clock that goes with the time of a sleeper, and that a test may set wrong.
class ManualClock final : public WallClock {
public:
    ManualClock(const ManualSleeper& sleeper, Instant start) : sleeper_(sleeper), start_(start) {}

    Instant now() override { return saturatingAdd(start_, std::chrono::duration_cast<Microseconds>(sleeper_.now())); }
    /// Sets the clock forward, or back.
    void shift(Microseconds span) { start_ = saturatingAdd(start_, span); }

private:
    const ManualSleeper& sleeper_;
    Instant start_;
};

} // namespace lumaro
