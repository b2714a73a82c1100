// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/DesktopKit/OtherDesktops.h"

#include <QWindow>

#include <optional>
#include <vector>

namespace lumaro::x11 {

/// Whether Qt draws on an X server. All that follows is for when it does, and means what `NativeDesktop.h` says.
bool isHere();

DesktopLevel lowestLevel();
bool becomeDesktop(QWindow& window);
void lowerDesktop(QWindow& window);
void letClicksThrough(QWindow& window, bool isClickThrough);
bool askForVisibility(QWindow& window);
std::optional<bool> coverageIn(const void* event, WId window);
std::vector<OtherDesktop> otherDesktops();
bool askForOtherDesktops();
bool isOfOtherDesktops(const void* event);

} // namespace lumaro::x11
