// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Services/NotificationCenter.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumaro {

/// What people are told of an item that their partner put up; none for kinds without words of their own. The text of a
/// note stands without blank lines around it, and is cut after 200 characters.
std::optional<std::string> summaryOf(const BoardItem& item, const Board& board);

/// One notification about all of these, which are on `board` and not empty, without a picture. Its title is the
/// partner's name, or the application's where that is not known.
LocalNotification newsOf(std::span<const BoardItem* const> items, const Board& board, std::string_view partnerName);

} // namespace lumaro
