// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtBackgroundRunner.h"

#include "LumaroCore/Support/Fatal.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

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
    std::vector<std::shared_ptr<Return>> done;
    bool isEnding = false;
    // The thread writes a byte when something is done; the event loop hears it.
    std::array<int, 2> pipe{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;
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
            const std::scoped_lock lock{mutex};
            done.push_back(std::move(job->wayBack));
            // A pipe that is full wakes the loop as well.
            static_cast<void>(::write(pipe[1], "!", 1) < 0);
        }
    }

    void comeBack() {
        std::array<char, 256> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
        while (::read(pipe[0], bytes.data(), bytes.size()) > 0) {
        }
        std::vector<std::shared_ptr<Return>> back;
        {
            const std::scoped_lock lock{mutex};
            back.swap(done);
        }
        for (const auto& wayBack : back) {
            // From a local: it may drop its task, and so what it is called from.
            if (auto then = std::exchange(wayBack->then, nullptr)) then();
        }
    }
};

QtBackgroundRunner::QtBackgroundRunner() : state_(std::make_unique<State>()) {
    auto& state = *state_;
    if (::pipe2(state.pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) fatal("the system gives no pipe");
    state.notifier = std::make_unique<QSocketNotifier>(state.pipe[0], QSocketNotifier::Read);
    QObject::connect(state.notifier.get(), &QSocketNotifier::activated, state.notifier.get(),
                     [&state] { state.comeBack(); });
    state.thread = std::thread{[&state] { state.work(); }};
}

QtBackgroundRunner::~QtBackgroundRunner() {
    {
        const std::scoped_lock lock{state_->mutex};
        state_->isEnding = true;
    }
    state_->changed.notify_one();
    state_->thread.join();
    state_->notifier.reset();
    for (const int end : state_->pipe) ::close(end);
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
