// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// The block card's transitions and readings. All pure; the clock is an argument, so a device that slept shows the
/// right face on waking without any message.
namespace Pomodoro {

/// What the card shows.
enum class Face : std::uint8_t { resting, running, rung };

constexpr std::array<std::string_view, 3> namesOf(Face) {
    return {"resting", "running", "rung"};
}

inline constexpr std::int64_t minMinutes = 1;
inline constexpr std::int64_t maxMinutes = 180;
inline constexpr std::int64_t coolDownMinutes = 15;
inline constexpr std::int64_t defaultMinutes = 25;
/// How long a finished block keeps ringing.
inline constexpr std::chrono::seconds ringingSpan{3600};

/// A new block; the minutes are held within 1 to 180. Starting anew clears the join.
PomodoroPayload started(PomodoroPayload timer, std::int64_t minutes, PartnerID by, Instant at);
/// The other person joins. Unchanged while resting, for the starter, and for a second join.
PomodoroPayload joined(PomodoroPayload timer, PartnerID by, Instant at);
PomodoroPayload coolingDown(PomodoroPayload timer, PartnerID by, Instant at);
/// At rest. The next block is as long as the last one of work.
PomodoroPayload rested(PomodoroPayload timer);

/// When the block or the cool-down ends; none while resting or when it never started.
std::optional<Instant> endsAt(const PomodoroPayload& timer);
/// Seconds to the end, never below 0.
double remaining(const PomodoroPayload& timer, Instant at);
/// How much of the span has passed, 0 to 1.
double progress(const PomodoroPayload& timer, Instant at);
Face face(const PomodoroPayload& timer, Instant at);
/// Whether both are in it.
bool isShared(const PomodoroPayload& timer);
bool includes(const PomodoroPayload& timer, PartnerID partner);

} // namespace Pomodoro

namespace PomodoroFormatting {

/// Minutes and seconds, rounded up to a whole second: 1500 is "25:00", 59.2 is "1:00". Nothing below "0:00".
std::string figure(double seconds);

} // namespace PomodoroFormatting
} // namespace lumaro
