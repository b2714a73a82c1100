// SPDX-License-Identifier: Apache-2.0
#pragma once

class QQuickWindow;

namespace lumaro {

/// Writes a line for each frame that the window shows: the time of the system's steady clock at which it was on its way
/// to the screen, the time that drawing it took, both in seconds, and the window's title. Only where the environment
/// variable LUMARO_FRAMES names a file, for those who measure; else this does nothing.
void logFrames(QQuickWindow& window);

} // namespace lumaro
