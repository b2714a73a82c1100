// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/ExitStatus.h"
#include "LumaroCore/Support/OneLine.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace lumaro {

/// Where a verb reads and writes.
struct Streams {
    std::istream& in;
    std::ostream& out;
    std::ostream& err;
};

/// Writes "lumaroctl" and the message as one line to `err`, and answers with `status`.
ExitStatus fail(Streams streams, ExitStatus status, std::string_view message);

} // namespace lumaro
