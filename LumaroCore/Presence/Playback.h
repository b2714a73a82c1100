// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Presence/NowPlaying.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace lumaro::Playback {

/// Without news for the length of a track and this, the track is over.
inline constexpr std::chrono::seconds silence{60};

/// Whether there is a track to be shown. A player that is stopped tells of none, and travels without title and artist.
bool hasTrack(const NowPlaying& playing);

/// Cuts title and artist to a kilobyte, and drops an artwork URL that is longer than two: a partner may send megabytes,
/// which every picture of the card would go through again.
void shorten(NowPlaying& playing);

/// Where the track is, in milliseconds: on from `progressMs` since `sampledAt` while it plays; never before its
/// beginning nor, when its length is known, behind its end. A sample of the future counts as one of now.
std::int64_t positionMs(const NowPlaying& playing, Instant now);

/// The part of the track that has been played, 0 to 1; none when its length is not known.
std::optional<double> progress(const NowPlaying& playing, Instant now);

/// When so much of the track, 0 to 1, will have been played, unless there is news; none when that has been, the track
/// stands, or its length is not known.
std::optional<Instant> reachesAt(const NowPlaying& playing, double part, Instant now);

/// When a track that plays counts as over unless there is news; `heardAt` is when this was heard, by this device's
/// clock. None for one that stands or whose length is not known.
std::optional<Instant> endsAt(const NowPlaying& playing, Instant heardAt);

/// Whether it is over by then.
bool hasEnded(const NowPlaying& playing, Instant heardAt, Instant now);

/// Whether somebody who has heard the one learns nothing from the other: the same track in the same state, and a
/// position where it would have come to by itself, give or take a second and a half.
bool saysTheSame(const NowPlaying& before, const NowPlaying& after);

} // namespace lumaro::Playback
