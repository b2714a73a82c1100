// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Log.h"

namespace lumaro {

/// One line "category: message" on standard error for everything of a level or above. From any thread: a line is
/// written in one piece.
class StderrLog final : public Log {
public:
    explicit StderrLog(LogLevel least) : least_(least) {}

    void write(LogLevel level, std::string_view category, std::string_view message) override;

private:
    LogLevel least_;
};

} // namespace lumaro
