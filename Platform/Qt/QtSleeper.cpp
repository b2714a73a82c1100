// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtSleeper.h"

#include <QTimer>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

class TimerWait final : public Sleeper::Wait {
public:
    TimerWait(Seconds span, std::move_only_function<void()> then) : then_(std::move(then)) {
        constexpr double longest = std::numeric_limits<int>::max();
        timer_.setSingleShot(true);
        // A coarse timer may ring a twentieth too early.
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            // Called from a local: it may drop this wait.
            auto ring = std::move(then_);
            ring();
        });
        timer_.start(static_cast<int>(std::clamp(std::ceil(span.count() * 1000), 0.0, longest)));
    }

private:
    QTimer timer_;
    std::move_only_function<void()> then_;
};

} // namespace

std::unique_ptr<Sleeper::Wait> QtSleeper::wait(Seconds span, std::move_only_function<void()> then) {
    return std::make_unique<TimerWait>(span, std::move(then));
}

} // namespace lumaro
