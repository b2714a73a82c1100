// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Sleeper.h"

#include <cstdint>
#include <vector>

namespace lumaro {

/// How long to wait before each attempt to connect again: exact delays that grow to a cap.
struct ReconnectBackoff {
    Seconds base{1};
    double multiplier = 2;
    Seconds cap{60};
    std::int64_t attempt = 0;

    /// The delay of the n-th attempt, counted from 0: base x multiplier^n, at most `cap`.
    Seconds delay(std::int64_t forAttempt) const;
    /// The delay of the current attempt; the next call is about the next one.
    Seconds nextDelay();
    void reset() { attempt = 0; }
    /// The next `count` delays; changes nothing.
    std::vector<Seconds> schedule(std::int64_t count) const;

    bool operator==(const ReconnectBackoff&) const = default;
};

} // namespace lumaro
