// SPDX-License-Identifier: Apache-2.0
#include "LumaroCtl/Streams.h"

#include "LumaroCore/Support/ThisComputer.h"

#include <ostream>

namespace lumaro {

ExitStatus fail(Streams streams, ExitStatus status, std::string_view message) {
    streams.err << "lumaroctl" << onOneLine(onAnyComputer(message)) << '\n';
    return status;
}

} // namespace lumaro
