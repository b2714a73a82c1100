// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// The text without line ends and other control characters, whatever a peer or the input put into it.
std::string onOneLine(std::string_view text);

} // namespace lumaro
