// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Store/StoreThread.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace lumaro {

class StoreThread::Queue final : public StoreQueue {
public:
    Queue(StoreThread& thread, const Post& post) : thread_(thread), post_(post) {}

    using StoreQueue::submit;
    void submit(Work work, Done done, Undone undone) override {
        thread_.submit({.work = std::move(work),
                        .done = std::move(done),
                        .undone = std::move(undone),
                        .post = &post_,
                        .result = {}});
    }

private:
    StoreThread& thread_;
    const Post& post_;
};

StoreThread::StoreThread(std::unique_ptr<TransactionalStore> store, std::size_t worksPerTransaction)
    : store_(std::move(store)), worksPerTransaction_(worksPerTransaction), thread_([this] { run(); }) {
}

StoreThread::~StoreThread() {
    stop();
}

std::unique_ptr<StoreQueue> StoreThread::queueFor(Post post) {
    const std::scoped_lock lock{mutex_};
    return std::make_unique<Queue>(*this, posts_.emplace_back(std::move(post)));
}

void StoreThread::submit(Submission submission) {
    std::unique_lock lock{mutex_};
    if (isStopping_) {
        ++figures_.failures;
        lock.unlock();
        submission.result = std::unexpected(StoreError{"the store is closed"});
        Group refused;
        refused.push_back(std::move(submission));
        report(std::move(refused));
        return;
    }
    waiting_.push_back(std::move(submission));
    const bool wakes = std::exchange(isIdle_, false);
    lock.unlock();
    if (wakes) wake_.notify_one();
}

void StoreThread::stop() {
    const std::scoped_lock joining{joining_};
    if (!thread_.joinable()) return;
    {
        const std::scoped_lock lock{mutex_};
        isStopping_ = true;
    }
    wake_.notify_one();
    thread_.join();
    store_.reset();
}

StoreThread::Figures StoreThread::figures() const {
    const std::scoped_lock lock{mutex_};
    auto figures = figures_;
    figures.waiting = waiting_.size();
    return figures;
}

void StoreThread::run() {
    for (auto group = nextGroup(); !group.empty(); group = nextGroup()) {
        carryOut(group);
        report(std::move(group));
    }
}

// Empty once the thread is to end and nothing waits.
StoreThread::Group StoreThread::nextGroup() {
    std::unique_lock lock{mutex_};
    while (waiting_.empty() && !isStopping_) {
        isIdle_ = true;
        wake_.wait(lock);
    }
    isIdle_ = false;
    const auto count = std::min(waiting_.size(), worksPerTransaction_);
    const auto end = waiting_.begin() + static_cast<std::ptrdiff_t>(count);
    Group group{std::move_iterator{waiting_.begin()}, std::move_iterator{end}};
    waiting_.erase(waiting_.begin(), end);
    return group;
}

void StoreThread::carryOut(Group& group) {
    std::uint64_t transactions = 0;
    std::uint64_t failures = 0;
    if (group.size() > 1 && inTransaction(group)) {
        transactions = 1;
    } else {
        // After a fault one by one, so that only the faulty ones fail.
        for (auto& submission : group) {
            submission.result = inTransaction({&submission, 1});
            if (!submission.result && submission.undone) submission.undone();
            ++(submission.result ? transactions : failures);
        }
    }
    const std::scoped_lock lock{mutex_};
    figures_.transactions += transactions;
    figures_.failures += failures;
    figures_.works += group.size() - failures;
}

StoreResult<void> StoreThread::inTransaction(std::span<Submission> works) {
    auto done = store_->beginTransaction();
    if (!done) return done;
    for (auto& submission : works) {
        done = submission.work(*store_);
        if (!done) {
            store_->rollBack();
            return done;
        }
    }
    return store_->commitTransaction();
}

// A submission goes back whole: what it captured goes where it came from.
void StoreThread::report(Group group) {
    std::ranges::stable_sort(group, std::less<>{}, &Submission::post);
    for (auto begin = group.begin(); begin != group.end();) {
        const auto* post = begin->post;
        const auto end = std::find_if(begin, group.end(), [&](const auto& other) { return other.post != post; });
        (*post)([told = Group{std::move_iterator{begin}, std::move_iterator{end}}]() mutable {
            for (auto& submission : told) submission.done(std::move(submission.result));
        });
        begin = end;
    }
}

} // namespace lumaro
