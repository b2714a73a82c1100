// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/BackgroundRunner.h"

#include <memory>

namespace lumaro {

/// Works on a thread of its own, and comes back in the Qt event loop of the thread that made it, which is the one that
/// it is used on.
class QtBackgroundRunner final : public BackgroundRunner {
public:
    QtBackgroundRunner();
    ~QtBackgroundRunner() override;

    [[nodiscard]] std::unique_ptr<Task> run(std::move_only_function<void()> work,
                                            std::move_only_function<void()> then) override;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace lumaro
