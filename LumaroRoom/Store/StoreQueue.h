// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/Store.h"

#include <functional>
#include <utility>

namespace lumaro {

/// The way to the store: work that is done in the order it is submitted, and is durable when it is reported done.
///
/// Works that wait together are committed together, and none waits longer than the commit before it plus its own.
class StoreQueue {
public:
    using Work = std::move_only_function<StoreResult<void>(Store&)>;
    using Done = std::move_only_function<void(StoreResult<void>)>;
    using Undone = std::move_only_function<void()>;

    StoreQueue() = default;
    StoreQueue(const StoreQueue&) = delete;
    StoreQueue& operator=(const StoreQueue&) = delete;
    virtual ~StoreQueue() = default;

    /// Runs `work` inside a transaction, on the store's thread; when the transaction is durable, or has failed and left
    /// nothing, calls `done` on the submitter's thread, in the order of submission and never from within this call.
    /// Works answer with errors of the store alone, and carry refusals in what they capture. A work runs again when
    /// another that shared its transaction has failed: it sets what it reports anew, and keeps what it captures.
    ///
    /// `undone` is called on the store's thread when the work has failed, before any that was submitted later runs: for
    /// those that build on it, whose submitter does not know yet.
    virtual void submit(Work work, Done done, Undone undone) = 0;
    void submit(Work work, Done done) { submit(std::move(work), std::move(done), nullptr); }
};

} // namespace lumaro
