// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/BrowserMemory.h"

namespace lumaro {

std::optional<std::int64_t> browserMemory() {
    return std::nullopt;
}

} // namespace lumaro
