// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Protocol/Messages.h"

#include <map>
#include <string>
#include <vector>

namespace lumaro {

/// A board with one of everything, as two people might have filled it, and what is known of the partner.
struct DemoBoard {
    Board board;
    std::map<UUID, std::string> pictures; ///< the files of its photos and stickers
    ServerMessage::Presence presence;
    ServerMessage::Calendar calendar;
};

/// At that time, in this device's zone. Needs the application object, which draws the pictures.
DemoBoard demoBoard(Instant now);
/// The same with as many items as a board holds.
DemoBoard fullDemoBoard(Instant now);

/// Where the partner is.
inline constexpr const char* demoZone = "Europe/Lisbon";

} // namespace lumaro
