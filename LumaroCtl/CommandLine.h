// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <span>

namespace lumaro {

/// Runs `lumaroctl` with these arguments, its own name first. Writes to `out` only what is whole, and one line to `err`
/// on a failure. Answers with the exit status (`ExitStatus`).
int runCommandLine(std::span<char* const> arguments, std::istream& in, std::ostream& out, std::ostream& err);

} // namespace lumaro
