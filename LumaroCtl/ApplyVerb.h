// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/JsonError.h"

#include <expected>
#include <iosfwd>
#include <string>
#include <string_view>

namespace lumaro {

/// Applies the ops of a request to its board: the answer, one line without its end.
std::expected<std::string, DecodeError> applyRequest(std::string_view request, Instant now);

/// Answers every line of `in` with a line, an unreadable one with its error; empty lines are passed over.
/// Answers whether every line could be read.
bool applyLines(std::istream& in, std::ostream& out, Instant now);

} // namespace lumaro
