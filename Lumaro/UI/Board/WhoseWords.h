// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "LumaroCore/BoardModel/BoardItem.h"

#include <QtCore/QString>

namespace lumaro {

// What is told of the selected item beside what it shows.

/// Whose it is and since when, "bo, 9:14"; within a week "bo, tuesday 9:14", then "bo, 3 may", and of another year "bo,
/// 3 may 2025". Of one's own that the partner has seen: "you, 9:14 · seen".
QString whoseAndWhen(const BoardItem& item, const LiveContext& live);
/// This person put it up, and the partner has seen it.
bool isSeen(const BoardItem& item, const LiveContext& live);
/// Of a card of the partner's on which something is missing: that it is, and what they can do. Empty of any other.
QString whatTheyCanDo(const BoardItem& item, const LiveContext& live);
/// What a note to them might say; empty where `whatTheyCanDo` is, or they can do nothing.
QString questionToThem(const BoardItem& item, const LiveContext& live);

} // namespace lumaro
