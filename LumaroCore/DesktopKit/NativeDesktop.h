// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QWindow>

#include <optional>

namespace lumaro {

// What a window system does beyond Qt; there is one file of it for each kind, and the build takes one.

/// Whether the window, which exists and is not shown yet, is now a part of the desktop.
bool becomeDesktop(QWindow& window);
/// Whether clicks on the existing window now go where they were told to.
bool letClicksThrough(QWindow& window, bool isClickThrough);
/// From now on this window's visibility is told as native events; whether it will be.
bool askForVisibility(QWindow& window);
/// What a native event says of whether a window is covered, if it says anything.
std::optional<bool> coverageIn(const QByteArray& eventType, const void* event, WId window);

} // namespace lumaro
