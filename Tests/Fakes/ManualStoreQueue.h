// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/StoreQueue.h"
#include "LumaroRoom/Store/TransactionalStore.h"

#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

namespace lumaro {

/// A store queue that a test drives: work waits until it is run, and is reported once it is committed.
class ManualStoreQueue final : public StoreQueue {
public:
    explicit ManualStoreQueue(TransactionalStore& store) : store_(store) {}

    using StoreQueue::submit;
    void submit(Work work, Done done, Undone undone) override {
        waiting_.push_back({std::move(work), {std::move(done), std::move(undone)}});
    }

    /// Works that have not run.
    std::size_t waitingCount() const { return waiting_.size(); }

    /// Runs the next work in the open transaction; false when none waits. An error of the work undoes what ran.
    bool runOne() {
        if (waiting_.empty()) return false;
        if (run_.empty()) static_cast<void>(store_.beginTransaction());
        auto job = std::move(waiting_.front());
        waiting_.pop_front();
        const auto done = job.work(store_);
        run_.push_back(std::move(job.end));
        if (done) return true;
        store_.rollBack();
        report(done);
        return true;
    }

    /// Commits what ran and reports it.
    void commit() {
        if (!run_.empty()) report(store_.commitTransaction());
    }

    /// Runs and commits, each work on its own, until nothing waits.
    void drain() {
        commit();
        while (runOne()) commit();
    }

private:
    struct End {
        Done done;
        Undone undone;
    };
    struct Job {
        Work work;
        End end;
    };

    void report(const StoreResult<void>& result) {
        for (auto& end : run_) {
            if (!result && end.undone) end.undone();
        }
        for (auto& end : std::exchange(run_, {})) end.done(result);
    }

    TransactionalStore& store_;
    std::deque<Job> waiting_;
    std::vector<End> run_;
};

} // namespace lumaro
