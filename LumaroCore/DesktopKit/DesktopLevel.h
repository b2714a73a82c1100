// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

class QWindow;

namespace lumaro {

// A window as a part of the desktop. Everything here is for the thread of the windows.

/// Where among the layers of a desktop a window lies.
enum class DesktopLevel : std::uint8_t {
    behindIcons,   ///< on every workspace, below all other windows and off the lists of them, whatever people do to it
    bottomMost,    ///< an ordinary window without a frame, below the others as long as nobody raises it
    iconsInTheWay, ///< no window hangs: icons and wallpaper are drawn as one here, and it would cover the icons
    refused,       ///< no window hangs: this desktop would make it an ordinary one, over the others or beside them
};

/// Hangs a window that was not shown yet as low as this desktop lets it, and tells how low that is; it is not to be
/// shown where it would be an ordinary window. Its screen and size are set. Afterwards its flags stay as they are: to
/// change them would make it an ordinary window again.
DesktopLevel placeAtDesktopLevel(QWindow& window);

/// Once it is shown: other windows of the desktop that what lies behind them shows through come to lie over it.
void keepBehindOthers(QWindow& window);

/// Whether clicks fall through the window to what lies behind it. Called after `placeAtDesktopLevel`; where the window
/// lies behind the icons, at any time from then on, elsewhere before it is shown.
void setClickThrough(QWindow& window, bool isClickThrough);

/// Watches whether anybody could see a window at all. Where the desktop does not say so, as under most compositors, it
/// counts as seen. The window outlives its watch.
class Coverage {
public:
    /// `changed` is told from the event loop.
    Coverage(QWindow& window, std::function<void(bool isCovered)> changed);
    Coverage(const Coverage&) = delete;
    Coverage& operator=(const Coverage&) = delete;
    ~Coverage();

    bool isCovered() const;

private:
    class Watch;
    std::unique_ptr<Watch> watch_;
};

} // namespace lumaro
