// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "LumaroCore/BoardModel/Payload.h"
#include "Widgets/Items/ItemFace.h"

namespace lumaro {

// The cards that say what is known of a person, and since when.

MusicFace musicFace(const NowPlayingSlotPayload& card, const LiveContext& live);
WindowFace windowFace(const LocationPayload& card, const LiveContext& live);
ClocksFace clocksFace(const TimezonesPayload& card, const LiveContext& live);
DayFace dayFace(const CalendarPayload& card, const LiveContext& live);

} // namespace lumaro
