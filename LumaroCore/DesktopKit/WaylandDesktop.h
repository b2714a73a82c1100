// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/DesktopKit/DesktopLevel.h"

namespace lumaro::wayland {

/// Whether Qt draws on a Wayland compositor. All that follows is for when it does, and means what `NativeDesktop.h`
/// says.
bool isHere();

DesktopLevel lowestLevel();
void prepareDesktop(QWindow& window);
bool becomeDesktop(QWindow& window);
void letClicksThrough(QWindow& window, bool isClickThrough);

} // namespace lumaro::wayland
