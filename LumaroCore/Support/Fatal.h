// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <source_location>
#include <string_view>

namespace lumaro {

/// Stops the program on a programming error, naming the place on standard error.
/// Never for data that came from a peer or the disk: those get a typed error.
[[noreturn]] void fatal(std::string_view what, std::source_location where = std::source_location::current());

} // namespace lumaro
