// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

namespace lumaro {

/// The event loop that the other adapters live in, for programs without windows. Made first and dropped last, once at a
/// time, on the thread that runs it.
class QtLoop {
public:
    QtLoop();
    QtLoop(const QtLoop&) = delete;
    QtLoop& operator=(const QtLoop&) = delete;
    ~QtLoop();

    /// Runs until `quit`, also when that came before.
    void run();
    void quit();

    /// From now on SIGINT and SIGTERM call `then` from within `run`, instead of ending the process. A second one ends
    /// it.
    void onTermination(std::function<void()> then);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace lumaro
