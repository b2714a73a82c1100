// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/DesktopKit/DesktopLevel.h"

#include <QRect>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QScreen;

namespace lumaro {

/// Another program's window that is the desktop, or a part of it.
struct OtherDesktop {
    QRect place;               ///< in pixels of the whole desktop
    bool isSeeThrough = false; ///< it draws icons alone, and what lies behind it shows
    std::string program = {};  ///< as the window calls it; at most 40 bytes on one line

    bool operator==(const OtherDesktop&) const = default;
};

/// How low a window may hang on a screen without covering anybody's icons. `place` is the screen's, in pixels.
DesktopLevel levelBeside(const std::vector<OtherDesktop>& others, const QRect& place, DesktopLevel lowest);

/// Watches the programs that draw the desktop: a file manager with its icons, or none. They come and go. On the thread
/// of the windows.
class OtherDesktops {
public:
    /// `changed` is told from the event loop.
    explicit OtherDesktops(std::function<void()> changed);
    OtherDesktops(const OtherDesktops&) = delete;
    OtherDesktops& operator=(const OtherDesktops&) = delete;
    ~OtherDesktops();

    /// Looks at this moment, and does not tell.
    void look();
    /// How low a window may hang on the screen now.
    DesktopLevel levelOn(const QScreen& screen) const;
    /// The program whose icons are in the way; empty when nobody's are.
    std::string program() const;

private:
    class Watch;
    std::unique_ptr<Watch> watch_;
};

} // namespace lumaro
