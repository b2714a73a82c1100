// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/WallClock.h"

namespace lumaro {

/// The system's clock, in UTC.
class SystemClock final : public WallClock {
public:
    Instant now() override;
};

} // namespace lumaro
