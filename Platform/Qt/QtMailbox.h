// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSocketNotifier>

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>

namespace lumaro {

/// Calls from any thread that come to pass one after the other, in the order they were posted, in the Qt event loop of
/// the thread that made the box. What was not done when the box goes is never done.
class QtMailbox {
public:
    QtMailbox();
    QtMailbox(const QtMailbox&) = delete;
    QtMailbox& operator=(const QtMailbox&) = delete;
    /// On its thread.
    ~QtMailbox();

    /// From any thread. Calls may post others, but not destroy the box.
    void post(std::move_only_function<void()> call);
    /// Does at once all that waits. On the box's thread.
    void empty();

private:
    using Calls = std::deque<std::move_only_function<void()>>;

    void wakeUp() const;
    void takeTurn();
    Calls take(std::size_t most);

    int wire_; // an eventfd: rung by whoever posts, heard by the event loop
    std::optional<QSocketNotifier> bell_;
    std::mutex mutex_;
    Calls calls_;
};

} // namespace lumaro
