// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Computer/Permissions.h"

#include <utility>

namespace lumaro {

Permissions::Permissions(Ports ports, PermissionState& state, Announcer& announcer)
    : ports_(ports), state_(state), announcer_(announcer) {
    refreshContacts();
}

void Permissions::refreshContacts() {
    const auto access = ports_.contacts.access();
    if (std::exchange(state_.contactsAccess, access) != access) announcer_.changed(AppChange::permissions);
}

void Permissions::refreshNotifications() {
    question_ = ports_.notifications.permission([this](NotificationPermission permission) {
        if (std::exchange(state_.notificationPermission, permission) != permission)
            announcer_.changed(AppChange::permissions);
    });
}

} // namespace lumaro
