// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/StoreQueue.h"
#include "LumaroRoom/Store/TransactionalStore.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace lumaro {

/// Owns a store and the thread it is used on. What waits in all queues, up to a limit, is one transaction: while it
/// goes to the disk the next one gathers.
class StoreThread {
public:
    /// Runs a function later, on the thread of whoever submits to a queue.
    using Post = std::function<void(std::move_only_function<void()>)>;

    /// Counted since the start.
    struct Figures {
        std::uint64_t transactions = 0; ///< that were committed
        std::uint64_t works = 0;        ///< that were done in them
        std::uint64_t failures = 0;     ///< works that were not
        std::size_t waiting = 0;        ///< works that wait at the moment
    };

    explicit StoreThread(std::unique_ptr<TransactionalStore> store, std::size_t worksPerTransaction = 512);
    StoreThread(const StoreThread&) = delete;
    StoreThread& operator=(const StoreThread&) = delete;
    ~StoreThread();

    /// A queue whose works' ends are told through `post`, all those of a transaction in one go. The thread outlives its
    /// queues; what was submitted is done, and told, even when its queue is gone. From any thread.
    std::unique_ptr<StoreQueue> queueFor(Post post);

    /// Does all that waits, then ends the thread and closes the store. What is submitted later fails. From any thread
    /// but the store's; a second call does nothing.
    void stop();

    Figures figures() const;

private:
    class Queue;
    struct Submission {
        StoreQueue::Work work;
        StoreQueue::Done done;
        StoreQueue::Undone undone;
        const Post* post = nullptr; ///< one of `posts_`
        StoreResult<void> result;
    };
    using Group = std::vector<Submission>;

    void submit(Submission submission);
    void run();
    Group nextGroup();
    void carryOut(Group& group);
    StoreResult<void> inTransaction(std::span<Submission> works);
    static void report(Group group);

    std::unique_ptr<TransactionalStore> store_;
    std::size_t worksPerTransaction_;

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<Submission> waiting_;
    std::deque<Post> posts_; ///< where they stand they stay
    Figures figures_;
    bool isIdle_ = false;
    bool isStopping_ = false;

    std::mutex joining_;
    std::thread thread_;
};

} // namespace lumaro
