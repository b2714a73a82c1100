// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/Streams.h"

#include <ostream>

namespace lumaro {

ExitStatus fail(Streams streams, ExitStatus status, std::string_view message) {
    streams.err << "lumaroctl" << onOneLine(message) << '\n';
    return status;
}

} // namespace lumaro
