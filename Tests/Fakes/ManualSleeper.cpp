// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/ManualSleeper.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

ManualSleeper::Time inWhole(Seconds span) {
    return std::chrono::round<ManualSleeper::Time>(std::max(span, Seconds{0}));
}

} // namespace

class ManualSleeper::Handle final : public Wait {
public:
    Handle(ManualSleeper& sleeper, Place place) : sleeper_(sleeper), place_(std::move(place)) {}
    ~Handle() override { sleeper_.waits_.erase(place_); }

private:
    ManualSleeper& sleeper_;
    Place place_;
};

std::unique_ptr<Sleeper::Wait> ManualSleeper::wait(Seconds span, std::move_only_function<void()> then) {
    const Place place{now_ + inWhole(span), made_++};
    waits_.emplace(place, std::move(then));
    return std::make_unique<Handle>(*this, place);
}

std::optional<ManualSleeper::Time> ManualSleeper::nextDue() const {
    if (waits_.empty()) return std::nullopt;
    return waits_.begin()->first.first;
}

void ManualSleeper::advance(Seconds span) {
    advanceTo(now_ + inWhole(span));
}

void ManualSleeper::advanceTo(Time time) {
    while (!waits_.empty() && waits_.begin()->first.first <= time) {
        auto fired = waits_.extract(waits_.begin());
        now_ = fired.key().first;
        fired.mapped()();
    }
    now_ = std::max(now_, time);
}

} // namespace lumaro
