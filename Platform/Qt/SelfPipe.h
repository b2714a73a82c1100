// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSocketNotifier>

#include <array>
#include <functional>
#include <optional>

namespace lumaro {

/// A pipe to oneself: rung anywhere, it wakes the Qt event loop of the thread that made it.
class SelfPipe {
public:
    /// `heard` is called from the event loop after a ring; several rings may be heard as one. It may destroy the pipe.
    explicit SelfPipe(std::function<void()> heard);
    SelfPipe(const SelfPipe&) = delete;
    SelfPipe& operator=(const SelfPipe&) = delete;
    /// On its thread, when nobody rings any more.
    ~SelfPipe();

    /// From any thread; does not block.
    void ring() const { ring(ends_[1]); }
    /// What a signal handler rings, which may use nothing but the descriptor.
    int bell() const { return ends_[1]; }
    /// Safe in a signal handler.
    static void ring(int bell) noexcept;

private:
    void silence() const;

    std::array<int, 2> ends_{-1, -1};
    std::optional<QSocketNotifier> notifier_;
};

} // namespace lumaro
