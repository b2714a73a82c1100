// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "LumaroCore/BoardModel/BoardItem.h"
#include "Widgets/Items/ItemFace.h"

namespace lumaro {

/// How a screen reader reads the item: "note from bo, pinned today, 'buy oranges'".
QString spoken(const BoardItem& item, const ItemFace& face, const LiveContext& live);

/// What it is, for the middle of a sentence: "a note, 'buy oranges'".
QString itemWords(const BoardItem& item);

} // namespace lumaro
