// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Playback.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace lumaro::Playback {
namespace {

// Beyond any track; what a device says of itself may be any number.
constexpr std::int64_t longestMs = std::int64_t{1000} * 60 * 60 * 24 * 365;
constexpr std::int64_t driftMs = 1500;

constexpr std::size_t longestWords = 1024;
constexpr std::size_t longestUrl = 2048;

// Not within a character.
void cut(std::string& text) {
    if (text.size() <= longestWords) return;
    auto end = longestWords;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    text.resize(end);
}

std::int64_t sane(std::int64_t milliseconds) {
    return std::clamp(milliseconds, std::int64_t{0}, longestMs);
}

} // namespace

bool hasTrack(const NowPlaying& playing) {
    return playing.isPlaying || !playing.title.empty() || !playing.artist.empty();
}

void shorten(NowPlaying& playing) {
    cut(playing.title);
    cut(playing.artist);
    if (playing.artworkURL && playing.artworkURL->size() > longestUrl) playing.artworkURL.reset();
}

std::int64_t positionMs(const NowPlaying& playing, Instant now) {
    const auto played = playing.isPlaying ? std::clamp(secondsBetween(playing.sampledAt, now) * 1000, 0.0,
                                                       static_cast<double>(longestMs))
                                          : 0.0;
    const auto position = sane(playing.progressMs) + static_cast<std::int64_t>(played);
    return playing.durationMs > 0 ? std::min(position, sane(playing.durationMs)) : position;
}

std::optional<double> progress(const NowPlaying& playing, Instant now) {
    if (playing.durationMs <= 0) return std::nullopt;
    return static_cast<double>(positionMs(playing, now)) / static_cast<double>(sane(playing.durationMs));
}

std::optional<Instant> reachesAt(const NowPlaying& playing, double part, Instant now) {
    if (!playing.isPlaying || playing.durationMs <= 0) return std::nullopt;
    const auto wanted = static_cast<std::int64_t>(std::ceil(part * static_cast<double>(sane(playing.durationMs))));
    const auto left = wanted - positionMs(playing, now);
    if (left <= 0) return std::nullopt;
    return saturatingAdd(std::max(now, playing.sampledAt), std::chrono::milliseconds{left} + Microseconds{1});
}

std::optional<Instant> endsAt(const NowPlaying& playing, Instant heardAt) {
    if (!playing.isPlaying || playing.durationMs <= 0) return std::nullopt;
    return saturatingAdd(heardAt, std::chrono::milliseconds{sane(playing.durationMs)} + silence);
}

bool hasEnded(const NowPlaying& playing, Instant heardAt, Instant now) {
    const auto end = endsAt(playing, heardAt);
    return end && *end <= now;
}

bool saysTheSame(const NowPlaying& before, const NowPlaying& after) {
    auto moved = before;
    moved.progressMs = after.progressMs;
    moved.sampledAt = after.sampledAt;
    return moved == after &&
           std::abs(positionMs(before, after.sampledAt) - positionMs(after, after.sampledAt)) <= driftMs;
}

} // namespace lumaro::Playback
