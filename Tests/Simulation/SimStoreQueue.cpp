// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimStoreQueue.h"

#include <utility>

namespace lumaro::simulation {

void SimStoreQueue::submit(Work work, Done done, Undone undone) {
    waiting_.push_back({.work = std::move(work), .done = std::move(done), .undone = std::move(undone)});
    if (!next_) startLater();
}

void SimStoreQueue::killAt(KillPoint point, std::function<void()> kill) {
    killPoint_ = point;
    kill_ = std::move(kill);
}

void SimStoreQueue::heal() {
    pace_ = usualPace;
    failing_ = 0;
    killPoint_ = KillPoint::none;
}

void SimStoreQueue::startLater() {
    next_ = time_.wait(pace_, [this] { transact(); });
}

// False when a work failed; then all of them are to be rolled back.
bool SimStoreQueue::runAll() {
    bool succeeded = failing_ == 0;
    for (auto& job : done_) {
        job.outcome = job.work(store_);
        succeeded = succeeded && job.outcome.has_value();
    }
    return succeeded;
}

void SimStoreQueue::transact() {
    done_ = std::exchange(waiting_, {});
    trace_.add("transaction", done_.size());
    static_cast<void>(store_.begin());
    if (sabotage_ == Sabotage::doneBeforeTheCommit) return reportTooSoon();
    const bool succeeded = runAll();
    if (killPoint_ == KillPoint::beforeCommit) {
        store_.undo();
        return die();
    }
    if (succeeded) {
        store_.makeDurable();
    } else {
        fail();
    }
    if (killPoint_ == KillPoint::afterCommit) return die();
    next_ = time_.wait(pace_, [this] { report(); });
}

void SimStoreQueue::fail() {
    store_.undo();
    if (failing_ > 0) --failing_;
    coverage_.note(Met::storeFaults);
    if (sabotage_ == Sabotage::failuresReportedAsDone) return;
    for (auto& job : done_) {
        job.outcome = std::unexpected(StoreError{.message = "as the script wants it"});
        if (job.undone) job.undone();
    }
}

// The planted fault: what was reported is not durable yet, and is lost when the server dies now.
void SimStoreQueue::reportTooSoon() {
    static_cast<void>(runAll());
    for (auto& job : std::exchange(done_, {})) job.done(std::move(job.outcome));
    next_ = time_.wait(pace_, [this] {
        killPoint_ == KillPoint::beforeCommit ? store_.undo() : store_.makeDurable();
        killPoint_ == KillPoint::none ? report() : die();
    });
}

void SimStoreQueue::die() {
    // A copy: the queue ends with its server.
    const auto kill = kill_;
    kill();
}

void SimStoreQueue::report() {
    auto jobs = std::exchange(done_, {});
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (killPoint_ == KillPoint::amidReports && i >= jobs.size() / 2) return die();
        jobs[i].done(std::move(jobs[i].outcome));
    }
    if (killPoint_ == KillPoint::amidReports) return die();
    next_.reset();
    if (!waiting_.empty()) startLater();
}

} // namespace lumaro::simulation
