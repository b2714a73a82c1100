// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/BackgroundRunner.h"

#include <cstddef>
#include <deque>

namespace lumaro {

/// Work that waits until the test lets it be done, on the test's own thread. Outlives its tasks.
class ManualBackground final : public BackgroundRunner {
public:
    [[nodiscard]] std::unique_ptr<Task> run(std::move_only_function<void()> work,
                                            std::move_only_function<void()> then) override {
        auto isWanted = std::make_shared<bool>(true);
        jobs_.push_back({std::move(work), std::move(then), isWanted});
        return std::make_unique<Handle>(std::move(isWanted));
    }

    std::size_t waiting() const { return jobs_.size(); }

    /// Does the oldest work and comes back from it; false when none waits.
    bool runNext() {
        if (jobs_.empty()) return false;
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        std::exchange(job.work, nullptr)();
        if (*job.isWanted) job.then();
        return true;
    }
    /// Does all of it, also what is begun meanwhile.
    void runAll() {
        while (runNext()) {
        }
    }

private:
    struct Job {
        std::move_only_function<void()> work;
        std::move_only_function<void()> then;
        std::shared_ptr<bool> isWanted;
    };
    class Handle final : public Task {
    public:
        explicit Handle(std::shared_ptr<bool> isWanted) : isWanted_(std::move(isWanted)) {}
        ~Handle() override { *isWanted_ = false; }

    private:
        std::shared_ptr<bool> isWanted_;
    };

    std::deque<Job> jobs_;
};

} // namespace lumaro
