// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/WallClock.h"
#include "LumaroRoom/Setup/SetupReport.h"

namespace lumaro {

/// Looks at a server as a device would: its name, its connection, its certificate against those that this computer
/// trusts, and a few requests that change nothing. Blocks for as long as the server takes, at most 15 seconds for each
/// of the five steps; an answer over 64 KiB is none.
SetupSight lookAt(const Url& asked, WallClock& clock);

} // namespace lumaro
