// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "LumaroCore/BoardModel/BoardItem.h"
#include "Widgets/Items/ItemFace.h"

#include <optional>

namespace lumaro {

/// What an item looks like now. Pure but for the picture, which comes from a store.
ItemFace faceOf(const BoardItem& item, const LiveContext& live);

/// When the item will look different though nothing happens; none when never.
std::optional<Instant> nextChange(const BoardItem& item, const LiveContext& live);

} // namespace lumaro
