// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtBackgroundRunner.h"

#include "Platform/Qt/QtMailbox.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace lumaro {
namespace {

// What comes behind the work; touched on the runner's own thread only. Empty once the task was dropped.
struct Return {
    std::move_only_function<void()> then;
};

class ReturnTask final : public BackgroundRunner::Task {
public:
    explicit ReturnTask(std::shared_ptr<Return> wayBack) : wayBack_(std::move(wayBack)) {}
    ReturnTask(const ReturnTask&) = delete;
    ReturnTask& operator=(const ReturnTask&) = delete;
    ~ReturnTask() override { wayBack_->then = nullptr; }

private:
    std::shared_ptr<Return> wayBack_;
};

struct Job {
    std::move_only_function<void()> work;
    std::shared_ptr<Return> wayBack;
};

} // namespace

struct QtBackgroundRunner::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Job> waiting;
    bool isEnding = false;
    QtMailbox back;
    std::thread thread;

    // The next job; none when there will be no more.
    std::optional<Job> next() {
        std::unique_lock lock{mutex};
        changed.wait(lock, [this] { return isEnding || !waiting.empty(); });
        if (waiting.empty()) return std::nullopt;
        auto job = std::move(waiting.front());
        waiting.pop_front();
        return job;
    }

    void work() {
        while (auto job = next()) {
            std::exchange(job->work, nullptr)();
            back.post([wayBack = std::move(job->wayBack)] {
                // From a local: it may drop its task, and so what it is called from.
                if (auto then = std::exchange(wayBack->then, nullptr)) then();
            });
        }
    }
};

QtBackgroundRunner::QtBackgroundRunner() : state_(std::make_unique<State>()) {
    state_->thread = std::thread{[&state = *state_] { state.work(); }};
}

QtBackgroundRunner::~QtBackgroundRunner() {
    {
        const std::scoped_lock lock{state_->mutex};
        state_->isEnding = true;
    }
    state_->changed.notify_one();
    state_->thread.join();
}

std::unique_ptr<BackgroundRunner::Task> QtBackgroundRunner::run(std::move_only_function<void()> work,
                                                                std::move_only_function<void()> then) {
    auto wayBack = std::make_shared<Return>(std::move(then));
    {
        const std::scoped_lock lock{state_->mutex};
        state_->waiting.push_back({std::move(work), wayBack});
    }
    state_->changed.notify_one();
    return std::make_unique<ReturnTask>(std::move(wayBack));
}

} // namespace lumaro
