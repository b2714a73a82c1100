// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The value of a desktop entry's "Exec" that starts a program with these arguments as they are.
std::string execValue(const std::vector<std::string>& command);

/// Whether one of the text's lines is `line`.
bool hasLine(std::string_view text, std::string_view line);

} // namespace lumaro
