// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// The text with "?" in place of each line end and control character, whatever a peer or the input put into it: it
/// stays one line, and no terminal takes orders from it.
std::string onOneLine(std::string_view text);

} // namespace lumaro
