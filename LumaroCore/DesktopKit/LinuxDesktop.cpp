// SPDX-License-Identifier: Apache-2.0
// X11 or Wayland, whichever Qt draws on. On its other platforms nothing is done beyond Qt.
#include "LumaroCore/DesktopKit/NativeDesktop.h"
#include "LumaroCore/DesktopKit/WaylandDesktop.h"
#include "LumaroCore/DesktopKit/X11Desktop.h"

namespace lumaro {
namespace {

bool isX11Event(const QByteArray& eventType) {
    return eventType == "xcb_generic_event_t";
}

} // namespace

DesktopLevel lowestLevel() {
    if (x11::isHere()) return x11::lowestLevel();
    return wayland::isHere() ? wayland::lowestLevel() : DesktopLevel::bottomMost;
}

void prepareDesktop(QWindow& window) {
    if (wayland::isHere()) wayland::prepareDesktop(window);
}

bool becomeDesktop(QWindow& window) {
    if (x11::isHere()) return x11::becomeDesktop(window);
    return wayland::isHere() && wayland::becomeDesktop(window);
}

void lowerDesktop(QWindow& window) {
    if (x11::isHere()) x11::lowerDesktop(window);
}

bool letClicksThrough(QWindow& window, bool isClickThrough) {
    const bool isX11 = x11::isHere();
    if (isX11) x11::letClicksThrough(window, isClickThrough);
    if (!isX11 && wayland::isHere()) wayland::letClicksThrough(window, isClickThrough);
    return isX11 || wayland::isHere();
}

bool askForVisibility(QWindow& window) {
    return x11::isHere() && x11::askForVisibility(window);
}

std::optional<bool> coverageIn(const QByteArray& eventType, const void* event, WId window) {
    return isX11Event(eventType) ? x11::coverageIn(event, window) : std::nullopt;
}

std::vector<OtherDesktop> otherDesktops() {
    return x11::isHere() ? x11::otherDesktops() : std::vector<OtherDesktop>{};
}

bool askForOtherDesktops() {
    return x11::isHere() && x11::askForOtherDesktops();
}

bool isOfOtherDesktops(const QByteArray& eventType, const void* event) {
    return isX11Event(eventType) && x11::isOfOtherDesktops(event);
}

} // namespace lumaro
