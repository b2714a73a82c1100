// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/StderrLog.h"

#include "LumaroCore/Support/OneLine.h"

#include <unistd.h>

#include <string>

namespace lumaro {

void StderrLog::write(LogLevel level, std::string_view category, std::string_view message) {
    if (level < least_) return;
    std::string line{category};
    line.append(": ").append(onOneLine(message)).append("\n");
    // There is nowhere to tell that the log cannot be written.
    static_cast<void>(::write(STDERR_FILENO, line.data(), line.size()) < 0);
}

} // namespace lumaro
