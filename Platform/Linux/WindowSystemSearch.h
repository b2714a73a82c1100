// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/WindowSystems.h"

namespace lumaro {

/// Asks the compositor and the X server that the environment names what they offer, over connections that end with this
/// call. Before the application object is made; as quick as they answer, and at most two seconds longer for a window
/// manager that is only starting. One that never answers holds up any program.
WindowSystems findWindowSystems();

} // namespace lumaro
