// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/StoreQueue.h"
#include "LumaroRoom/Store/TransactionalStore.h"

#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

namespace lumaro {

/// A store queue in the hands of a test: work waits until it is run, and is reported once it is committed.
class ManualStoreQueue final : public StoreQueue {
public:
    explicit ManualStoreQueue(TransactionalStore& store) : store_(store) {}

    using StoreQueue::submit;
    void submit(Work work, Done done, Undone undone) override {
        waiting_.push_back({std::move(work), {std::move(done), std::move(undone)}});
    }

    /// Works that have not run.
    std::size_t waitingCount() const { return waiting_.size(); }
    /// Works that ran and are not committed.
    std::size_t runCount() const { return run_.size(); }
    bool isIdle() const { return waiting_.empty() && run_.empty(); }

    /// Runs the next work in the open transaction; false when none waits. An error of the work fails the transaction.
    bool runOne() {
        if (waiting_.empty()) return false;
        if (run_.empty()) {
            if (auto begun = store_.beginTransaction(); !begun) return fail(begun.error()), true;
        }
        auto job = std::move(waiting_.front());
        waiting_.pop_front();
        auto done = job.work(store_);
        run_.push_back(std::move(job.end));
        if (!done) fail(done.error());
        return true;
    }

    /// Commits what ran and reports it; false when nothing did.
    bool commit() {
        if (run_.empty()) return false;
        report(store_.commitTransaction());
        return true;
    }

    /// Undoes what ran and reports it as failed. When nothing did, the next work fails without having run.
    void fail(const StoreError& error = {"the disk is full"}) {
        store_.rollBack();
        if (run_.empty() && !waiting_.empty()) {
            run_.push_back(std::move(waiting_.front().end));
            waiting_.pop_front();
        }
        report(std::unexpected(error));
    }

    /// The process dies: what ran is undone, and nothing is ever reported.
    void crash() {
        store_.rollBack();
        run_.clear();
        waiting_.clear();
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
