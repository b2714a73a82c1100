// SPDX-License-Identifier: Apache-2.0
// Where there is nothing beyond what Qt does.
#include "LumaroCore/DesktopKit/NativeDesktop.h"

namespace lumaro {

DesktopLevel lowestLevel() {
    return DesktopLevel::bottomMost;
}

void prepareDesktop(QWindow& /*window*/) {
}

bool becomeDesktop(QWindow& /*window*/) {
    return false;
}

void lowerDesktop(QWindow& /*window*/) {
}

bool letClicksThrough(QWindow& /*window*/, bool /*isClickThrough*/) {
    return false;
}

bool askForVisibility(QWindow& /*window*/) {
    return false;
}

std::optional<bool> coverageIn(const QByteArray& /*eventType*/, const void* /*event*/, WId /*window*/) {
    return std::nullopt;
}

std::vector<OtherDesktop> otherDesktops() {
    return {};
}

bool askForOtherDesktops() {
    return false;
}

bool isOfOtherDesktops(const QByteArray& /*eventType*/, const void* /*event*/) {
    return false;
}

} // namespace lumaro
