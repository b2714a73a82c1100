// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Board/LiveBoard.h"
#include "Lumaro/Model/Computer/DesktopSwitch.h"
#include "Lumaro/Model/Computer/Permissions.h"
#include "Lumaro/Model/Membership/BoardHome.h"
#include "Lumaro/Model/Membership/Invitations.h"
#include "Lumaro/Model/Membership/Membership.h"
#include "Lumaro/Model/Membership/Pairing.h"
#include "Lumaro/Model/Membership/People.h"
#include "Lumaro/Model/Presence/Feeds.h"
#include "Lumaro/Model/Room/Connection.h"

#include <string>

namespace lumaro {

/// Everything that a view may show: the states of all parts side by side. Each part changes its own, on the main
/// thread.
struct AppState : MembershipState,
                  PairingState,
                  BoardHomeState,
                  InvitationState,
                  PeopleState,
                  LineState,
                  BoardState,
                  FeedsState,
                  PermissionState,
                  DesktopState {
    /// The latest text about something that did not work out.
    std::string notice;
};

} // namespace lumaro
