// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Services/ContactCard.h"
#include "LumaroCore/Services/NotificationCenter.h"

#include <memory>

namespace lumaro {

/// What the person lets this program do on their computer.
struct PermissionState {
    ContactsAccess contactsAccess = ContactsAccess::notDetermined;
    NotificationPermission notificationPermission = NotificationPermission::notDetermined;
};

/// Asks the system how things stand: people change them behind a program's back.
class Permissions {
public:
    /// All outlive this.
    struct Ports {
        ContactCard& contacts;
        NotificationCenter& notifications;
    };

    Permissions(Ports ports, PermissionState& state, Announcer& announcer);
    Permissions(const Permissions&) = delete;
    Permissions& operator=(const Permissions&) = delete;
    ~Permissions() = default;

    void refreshContacts();
    void refreshNotifications();

private:
    Ports ports_;
    PermissionState& state_;
    Announcer& announcer_;
    std::unique_ptr<NotificationCenter::Question> question_;
};

} // namespace lumaro
