// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace lumaro {

/// A span of real time.
using Seconds = std::chrono::duration<double>;

/// Waits on behalf of a component, on that component's thread.
class Sleeper {
public:
    /// A wait under way. Dropping it cancels the wait: its `then` is not called any more.
    class Wait {
    public:
        Wait() = default;
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;
        virtual ~Wait() = default;
    };

    Sleeper() = default;
    Sleeper(const Sleeper&) = delete;
    Sleeper& operator=(const Sleeper&) = delete;
    virtual ~Sleeper() = default;

    /// Calls `then` once after `span`, never from within this call. `then` may drop its own wait.
    [[nodiscard]] virtual std::unique_ptr<Wait> wait(Seconds span, std::move_only_function<void()> then) = 0;
};

} // namespace lumaro
