// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"

namespace lumaro {

/// The time of day as this machine believes it. It may jump either way; nothing is timed by it.
class WallClock {
public:
    WallClock() = default;
    WallClock(const WallClock&) = delete;
    WallClock& operator=(const WallClock&) = delete;
    virtual ~WallClock() = default;

    virtual Instant now() = 0;
};

} // namespace lumaro
