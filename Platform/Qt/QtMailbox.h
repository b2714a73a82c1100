// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Platform/Qt/SelfPipe.h"

#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace lumaro {

/// Calls from any thread that come to pass one after the other, in the order they were posted, in the Qt event loop of
/// the thread that made the box. What was not done when the box goes is never done.
class QtMailbox {
public:
    using Call = std::move_only_function<void()>;

    QtMailbox();
    QtMailbox(const QtMailbox&) = delete;
    QtMailbox& operator=(const QtMailbox&) = delete;
    /// On its thread, also from within one of its calls.
    ~QtMailbox();

    /// From any thread. Calls may post others.
    void post(Call call);
    /// Does at once all that waits, and what that posts. On the box's thread.
    void empty();

private:
    void takeTurn();
    bool doNext();
    std::optional<Call> next();

    std::mutex mutex_;
    std::deque<Call> calls_;
    bool* isGone_ = nullptr; ///< where the call under way looks whether the box is still there
    SelfPipe bell_;
};

} // namespace lumaro
