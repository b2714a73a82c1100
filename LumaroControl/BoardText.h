// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"
#include "LumaroCore/Protocol/Partners.h"
#include "LumaroCore/SyncClient/SyncClient.h"

#include <optional>
#include <string>
#include <vector>

namespace lumaro {

// The board and what happens to it, as lines for people.

/// The first eight digits of an id, which tell the items of a board apart.
std::string shortId(const UUID& id);
/// What the item is and holds: `note "buy oranges"`.
std::string itemText(const BoardItem& item);
/// Who is on a slot: a name, or "a" or "b" while none is known.
std::string nameOfSlot(const SlotNames& names, PartnerID slot);

/// A line for the board and one for each item, from the back to the front.
std::string boardText(const Board& board, const SlotNames& names);
/// A line for each thing that is different.
std::vector<std::string> changeLines(const Board& before, const Board& after, const SlotNames& names);
/// What an op does, in a few words.
std::string opText(const Op& op);

std::string stateText(const ConnectionState& state);
/// What a message tells people beside the board it changed; none for one that says nothing more.
std::optional<std::string> messageText(const ServerMessage& message, const SlotNames& names);

} // namespace lumaro
