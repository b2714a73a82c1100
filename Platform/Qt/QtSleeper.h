// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Sleeper.h"

namespace lumaro {

/// Waits in the Qt event loop of the thread that calls it, never less than it was told to.
class QtSleeper final : public Sleeper {
public:
    [[nodiscard]] std::unique_ptr<Wait> wait(Seconds span, std::move_only_function<void()> then) override;
};

} // namespace lumaro
