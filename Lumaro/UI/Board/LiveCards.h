// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/UI/Board/LiveContext.h"
#include "Lumaro/UI/Board/TrackWords.h"
#include "LumaroCore/BoardModel/Payload.h"
#include "Widgets/Items/ItemFace.h"

#include <optional>

namespace lumaro {

// The cards that say what is known of a person, and since when.

/// On a card of that scale.
MusicFace musicFace(const NowPlayingSlotPayload& card, double scale, const LiveContext& live);
/// When the card will look different though nothing happens: the arm moves, or the track must be over.
std::optional<Instant> nextChangeOf(const NowPlayingSlotPayload& card, const LiveContext& live);
/// What the card says of its track in full.
TrackWords trackWords(const NowPlayingSlotPayload& card, const LiveContext& live);
WindowFace windowFace(const LocationPayload& card, const LiveContext& live);
ClocksFace clocksFace(const TimezonesPayload& card, const LiveContext& live);
DayFace dayFace(const CalendarPayload& card, const LiveContext& live);

} // namespace lumaro
