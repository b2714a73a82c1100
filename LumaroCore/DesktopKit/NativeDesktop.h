// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/DesktopKit/OtherDesktops.h"

#include <QByteArray>
#include <QWindow>

#include <optional>

namespace lumaro {

// What a window system does beyond Qt; there is one file of it for each kind, and the build takes one.

/// How low a window can hang here, whatever else draws the desktop.
DesktopLevel lowestLevel();
/// Before the native window is made.
void prepareDesktop(QWindow& window);
/// Whether the window, which exists and is not shown yet, is now a part of the desktop.
bool becomeDesktop(QWindow& window);
/// The window, which is shown, comes to lie below the other windows of the desktop.
void lowerDesktop(QWindow& window);
/// Whether clicks on the existing window now go where they were told to.
bool letClicksThrough(QWindow& window, bool isClickThrough);
/// From now on this window's visibility is told as native events; whether it will be.
bool askForVisibility(QWindow& window);
/// What a native event says of whether a window is covered, if it says anything.
std::optional<bool> coverageIn(const QByteArray& eventType, const void* event, WId window);

/// The other programs' windows that are the desktop at this moment, as far as the window system tells.
std::vector<OtherDesktop> otherDesktops();
/// From now on it is told as native events when they may have changed; whether it will be.
bool askForOtherDesktops();
/// Whether a native event says so.
bool isOfOtherDesktops(const QByteArray& eventType, const void* event);

} // namespace lumaro
