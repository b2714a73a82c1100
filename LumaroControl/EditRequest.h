// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/BoardRequest.h"
#include "LumaroCore/BoardLogic/BoardVerb.h"
#include "LumaroCore/BoardLogic/SharedBoard.h"

#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

// Requests that edit, as verbs on a board, for whichever process does them.

/// The one item of the board whose id begins so, in either case; else a line for people.
std::expected<UUID, std::string> itemBeginningWith(const Board& board, std::string_view prefix);

/// The verb that a request asks for on this board, or a line for people that says why there is none.
using AskedVerb = std::expected<BoardVerb, std::string>;
AskedVerb verbOf(const BoardRequest::PutUp& put, const Board& board);
AskedVerb verbOf(const BoardRequest::Move& move, const Board& board);
AskedVerb verbOf(const BoardRequest::Turn& turn, const Board& board);
AskedVerb verbOf(const BoardRequest::Resize& resize, const Board& board);
AskedVerb verbOf(const BoardRequest::ToFront& raised, const Board& board);
AskedVerb verbOf(const BoardRequest::ToBack& lowered, const Board& board);
AskedVerb verbOf(const BoardRequest::TakeDown& gone, const Board& board);
AskedVerb verbOf(const BoardRequest::Keep& kept, const Board& board);
AskedVerb verbOf(const BoardRequest::Unkeep& unkept, const Board& board);
AskedVerb verbOf(const BoardRequest::Lock& locked, const Board& board);
AskedVerb verbOf(const BoardRequest::Unlock& freed, const Board& board);
AskedVerb verbOf(const BoardRequest::SetBackground& wanted, const Board& board);

/// A request that edits.
template <class Request>
concept EditRequest = requires(const Request& request, const Board& board) { verbOf(request, board); };

/// What is printed once the verb is done.
std::string outputOf(const BoardVerb& verb);
/// The batches that an earlier asking for the same verb is still waiting in: a second asking shares their fate.
std::vector<UUID> batchesAlreadyDoing(const BoardVerb& verb, const SharedBoard& board);

} // namespace lumaro
