// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Sleeper.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

namespace lumaro {

/// Time that passes when the test says so. Waits fire in the order of their due times; those due together, in the order
/// they were made. Outlives its waits.
class ManualSleeper final : public Sleeper {
public:
    /// Since the sleeper was made; whole numbers, so that sums of spans meet.
    using Time = std::chrono::nanoseconds;

    [[nodiscard]] std::unique_ptr<Wait> wait(Seconds span, std::move_only_function<void()> then) override;

    Time now() const { return now_; }
    std::size_t waiting() const { return waits_.size(); }
    /// When the next wait is due.
    std::optional<Time> nextDue() const;

    /// Lets so much time pass, and all fire that falls due, also of what is begun meanwhile.
    void advance(Seconds span);
    void advanceTo(Time time);

private:
    class Handle;
    using Place = std::pair<Time, std::uint64_t>;

    Time now_{0};
    std::uint64_t made_ = 0;
    std::map<Place, std::move_only_function<void()>> waits_;
};

} // namespace lumaro
