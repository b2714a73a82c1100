// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Board.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lumaro {

/// What people are told of an item that their partner put up; none for kinds without words of their own.
std::optional<std::string> summaryOf(const BoardItem& item, const Board& board);

/// The body of one notification about all of these, which are on `board` and not empty.
std::string newsOf(std::span<const BoardItem* const> items, const Board& board, std::string_view partnerName);

} // namespace lumaro
