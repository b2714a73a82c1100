// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BlockBell.h"

#include "LumaroCore/Presence/Pomodoro.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

// A wait does not see that the clock was set: the clock is read again at least this often.
constexpr Seconds longestWait{60};

std::set<Instant> endsOn(const Board& board, PartnerID slot) {
    std::set<Instant> ends;
    for (const auto& item : board.items) {
        const auto* const timer = item.payload.as<PomodoroPayload>();
        if (timer == nullptr || !Pomodoro::includes(*timer, slot)) continue;
        if (const auto end = Pomodoro::endsAt(*timer)) ends.insert(*end);
    }
    return ends;
}

} // namespace

void BlockBell::watch(const Board& board, PartnerID slot) {
    const auto now = clock_.now();
    const auto ends = endsOn(board, slot);
    const auto isGone = [&](Instant end) { return !ends.contains(end); };
    std::erase_if(awaited_, isGone);
    std::erase_if(past_, isGone);
    for (const auto end : ends) {
        if (end > now && !past_.contains(end)) awaited_.insert(end);
    }
    ringDue();
}

void BlockBell::stop() {
    awaited_.clear();
    past_.clear();
    wait_.reset();
}

void BlockBell::ringDue() {
    const auto now = clock_.now();
    std::vector<Instant> due;
    while (!awaited_.empty() && *awaited_.begin() <= now) {
        const auto end = *awaited_.begin();
        awaited_.erase(awaited_.begin());
        past_.insert(end);
        if (now < saturatingAdd(end, Pomodoro::ringingSpan)) due.push_back(end);
    }
    waitForNext();
    // Last, as whoever hears it may call this bell again.
    for (const auto end : due) ring_(end);
}

void BlockBell::waitForNext() {
    wait_.reset();
    if (awaited_.empty()) return;
    const Seconds left{secondsBetween(clock_.now(), *awaited_.begin())};
    wait_ = sleeper_.wait(std::min(left, longestWait), [this] { ringDue(); });
}

} // namespace lumaro
