// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <span>

namespace lumaro {

/// Exit statuses of `lumaroctl`, those of sysexits.h.
enum class ExitStatus : int {
    ok = 0,
    usage = 64, ///< the command line makes no sense
    data = 65,  ///< the input cannot be read
    inOut = 74, ///< standard input or output failed
};

/// Runs `lumaroctl` with these arguments, its own name first. Writes to `out` only what is whole, and one line to `err`
/// on a failure. Answers with the exit status.
int runCommandLine(std::span<char* const> arguments, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace lumaro
