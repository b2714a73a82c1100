// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Computer/DesktopSwitch.h"

namespace lumaro {

void offerLaunchAtLogin(UserDefaults& defaults, LoginItem& loginItem, Log& log) {
    if (defaults.boolean("didOfferLaunchAtLogin").value_or(false)) return;
    // First, so that a failure is not tried again.
    defaults.setBoolean("didOfferLaunchAtLogin", true);
    if (loginItem.isEnabled()) return;
    if (const auto enabled = loginItem.enable(); enabled) {
        log.write(LogLevel::info, "app", "registered to open at login");
    } else {
        log.write(LogLevel::error, "app", "could not register for login: " + enabled.error());
    }
}

} // namespace lumaro
