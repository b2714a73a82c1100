// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace lumaro {

/// Runs functions that block on a thread of its own, one after the other in the order they came, and comes back to the
/// thread that asked. A runner that goes finishes the work it has taken on, and calls no `then` any more.
class BackgroundRunner {
public:
    /// Work that was handed over. Dropping it forgets its `then`; the work is done all the same.
    class Task {
    public:
        Task() = default;
        Task(const Task&) = delete;
        Task& operator=(const Task&) = delete;
        virtual ~Task() = default;
    };

    BackgroundRunner() = default;
    BackgroundRunner(const BackgroundRunner&) = delete;
    BackgroundRunner& operator=(const BackgroundRunner&) = delete;
    virtual ~BackgroundRunner() = default;

    /// Calls `work` elsewhere and then `then` on the caller's thread, never from within this call. What `work` holds is
    /// gone before `then` is called. `then` may drop its own task.
    [[nodiscard]] virtual std::unique_ptr<Task> run(std::move_only_function<void()> work,
                                                    std::move_only_function<void()> then) = 0;
};

/// The same for work with a result, which `then` is called with.
template <class Work, class Then>
[[nodiscard]] std::unique_ptr<BackgroundRunner::Task> inBackground(BackgroundRunner& runner, Work work, Then then) {
    auto result = std::make_shared<std::optional<std::invoke_result_t<Work&>>>();
    return runner.run([result, work = std::move(work)]() mutable { result->emplace(work()); },
                      [result, then = std::move(then)]() mutable { then(std::move(**result)); });
}

} // namespace lumaro
