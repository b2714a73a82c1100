// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Pomodoro.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumaro {
namespace Pomodoro {
namespace {

PomodoroPayload begun(PomodoroPayload timer, PomodoroPhase phase, std::int64_t minutes, PartnerID by, Instant at) {
    timer.minutes = minutes;
    timer.phase = phase;
    timer.startedAt = at;
    timer.startedBy = by;
    timer.joinedAt.reset();
    return timer;
}

// The minutes of a peer's timer may be any number: they are held where their microseconds fit.
Microseconds spanOf(std::int64_t minutes) {
    constexpr std::int64_t limit = std::numeric_limits<std::int64_t>::max() / 60'000'000;
    return std::chrono::minutes{std::clamp(minutes, -limit, limit)};
}

} // namespace

PomodoroPayload started(PomodoroPayload timer, std::int64_t minutes, PartnerID by, Instant at) {
    return begun(timer, PomodoroPhase::block, std::clamp(minutes, minMinutes, maxMinutes), by, at);
}

PomodoroPayload joined(PomodoroPayload timer, PartnerID by, Instant at) {
    const bool canJoin =
        timer.phase != PomodoroPhase::resting && timer.startedBy && timer.startedBy != by && !timer.joinedAt;
    if (canJoin) timer.joinedAt = at;
    return timer;
}

PomodoroPayload coolingDown(PomodoroPayload timer, PartnerID by, Instant at) {
    return begun(timer, PomodoroPhase::coolDown, coolDownMinutes, by, at);
}

PomodoroPayload rested(PomodoroPayload timer) {
    if (timer.phase == PomodoroPhase::coolDown) timer.minutes = defaultMinutes;
    timer.phase = PomodoroPhase::resting;
    timer.startedAt.reset();
    timer.startedBy.reset();
    timer.joinedAt.reset();
    return timer;
}

std::optional<Instant> endsAt(const PomodoroPayload& timer) {
    if (timer.phase == PomodoroPhase::resting || !timer.startedAt) return std::nullopt;
    return saturatingAdd(*timer.startedAt, spanOf(timer.minutes));
}

double remaining(const PomodoroPayload& timer, Instant at) {
    const auto end = endsAt(timer);
    return end ? std::max(0.0, secondsBetween(at, *end)) : 0.0;
}

double progress(const PomodoroPayload& timer, Instant at) {
    const auto end = endsAt(timer);
    if (!end || !timer.startedAt) return 0;
    const double span = secondsBetween(*timer.startedAt, *end);
    if (span <= 0) return 1;
    return std::clamp(secondsBetween(*timer.startedAt, at) / span, 0.0, 1.0);
}

Face face(const PomodoroPayload& timer, Instant at) {
    const auto end = endsAt(timer);
    if (!end) return Face::resting;
    if (at < *end) return Face::running;
    const bool rings = timer.phase == PomodoroPhase::block && at < saturatingAdd(*end, ringingSpan);
    return rings ? Face::rung : Face::resting;
}

bool isShared(const PomodoroPayload& timer) {
    return timer.phase != PomodoroPhase::resting && timer.joinedAt.has_value();
}

bool includes(const PomodoroPayload& timer, PartnerID partner) {
    if (timer.phase == PomodoroPhase::resting || !timer.startedBy) return false;
    return timer.startedBy == partner || timer.joinedAt.has_value();
}

} // namespace Pomodoro

std::string PomodoroFormatting::figure(double seconds) {
    // 2^53 seconds are beyond any timer; a NaN counts as nothing.
    const double whole = seconds > 0 ? std::min(std::ceil(seconds), 0x1p53) : 0.0;
    const auto count = static_cast<std::int64_t>(whole);
    const auto rest = count % 60;
    return std::to_string(count / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

} // namespace lumaro
