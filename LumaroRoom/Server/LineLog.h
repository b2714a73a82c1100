// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/WallClock.h"

namespace lumaro {

/// One line of key=value pairs on standard error for each event of a level or above. From any thread: a line is
/// written in one piece.
class LineLog final : public Log {
public:
    LineLog(WallClock& clock, LogLevel least) : clock_(clock), least_(least) {}

    void write(LogLevel level, std::string_view category, std::string_view message) override;

private:
    WallClock& clock_;
    LogLevel least_;
};

} // namespace lumaro
