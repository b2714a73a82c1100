// SPDX-License-Identifier: Apache-2.0
#include "Fuzz/Fuzz.h"
#include "LumaroCore/Presence/Pomodoro.h"

using namespace lumaro;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto timer = fuzz::roundTrip<PomodoroPayload>(fuzz::textOf(data, size));
    if (!timer) return 0;
    for (const auto at : {Instant::min(), Instant{}, timer->startedAt.value_or(Instant{}), Instant::max()}) {
        const double progress = Pomodoro::progress(*timer, at);
        fuzz::require(progress >= 0 && progress <= 1, "progress is out of range");
        fuzz::require(Pomodoro::remaining(*timer, at) >= 0, "time runs backwards");
        const bool isRunning = Pomodoro::face(*timer, at) == Pomodoro::Face::running;
        fuzz::require(isRunning == (Pomodoro::remaining(*timer, at) > 0), "the face and the figure disagree");
    }
    return 0;
}
