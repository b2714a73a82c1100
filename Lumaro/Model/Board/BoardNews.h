// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Services/NotificationCenter.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumaro {

// What notifications say, without pictures and actions. Names end after 40 characters; a note that is longer than 120,
// or than three lines, is told on one line and ends behind a word.

/// What people are told of an item that their partner put up, as long as it is; none for kinds without words of their
/// own.
std::optional<std::string> summaryOf(const BoardItem& item, const Board& board);

/// All of these, which are on `board` and not none, came at once. The title is the partner's name, or the application's
/// where that is not known.
LocalNotification newsOf(std::span<const BoardItem* const> items, const Board& board, std::string_view partnerName);
/// So many came, one after the other.
LocalNotification newsOfMany(std::size_t count, std::string_view partnerName);
/// A block that this person is in, or its cool-down, is over.
LocalNotification newsOf(const PomodoroPayload& timer, std::string_view partnerName);

} // namespace lumaro
