// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

namespace lumaro {

/// What is on the board before there is a partner, so that it is never empty. It is shown and never sent.
Board starterBoard(Instant now);

} // namespace lumaro
