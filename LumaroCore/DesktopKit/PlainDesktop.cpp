// SPDX-License-Identifier: Apache-2.0
// Where there is nothing beyond what Qt does.
#include "LumaroCore/DesktopKit/NativeDesktop.h"

namespace lumaro {

bool becomeDesktop(QWindow& /*window*/) {
    return false;
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

} // namespace lumaro
