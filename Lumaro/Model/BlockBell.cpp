// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/BlockBell.h"

#include "LumaroCore/Presence/Pomodoro.h"

#include <algorithm>
#include <chrono>

namespace lumaro {
namespace {

// The clock may jump while one waits: look at it again at times.
constexpr Seconds longestWait{60};

} // namespace

void BlockBell::watch(const Board& board, PartnerID slot) {
    const auto now = clock_.now();
    std::optional<Instant> next;
    bool isAwaitedStill = false;
    for (const auto& item : board.items) {
        const auto* const timer = item.payload.as<PomodoroPayload>();
        if (timer == nullptr || !Pomodoro::includes(*timer, slot)) continue;
        const auto end = Pomodoro::endsAt(*timer);
        if (!end) continue;
        if (end == awaited_) isAwaitedStill = true;
        if (*end > now && (!next || *end < *next)) next = end;
    }
    const auto due = awaited_;
    awaited_ = next;
    wait_.reset();
    if (awaited_) look();
    // One that ended while the machine slept rings as long as its card does.
    if (due && isAwaitedStill && *due <= now && now < *due + Pomodoro::ringingSpan) ring_(*due);
}

void BlockBell::stop() {
    awaited_.reset();
    wait_.reset();
}

void BlockBell::look() {
    const auto left = std::chrono::duration_cast<Seconds>(*awaited_ - clock_.now());
    if (left > Seconds{0}) {
        wait_ = sleeper_.wait(std::min(left, longestWait), [this] { look(); });
        return;
    }
    const auto end = *awaited_;
    awaited_.reset();
    wait_.reset();
    if (-left < Pomodoro::ringingSpan) ring_(end);
}

} // namespace lumaro
