// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumaro {

/// A text as it fits on one line: without control characters, each run of white space a single space. One of more than
/// so many characters as people count them ends behind a word, or within the last one where that is very long, with
/// "…".
std::string shortened(std::string_view text, std::size_t characters);

} // namespace lumaro
