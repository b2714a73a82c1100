// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

namespace lumaro {

/// Bytes of memory that this process and those below it have to themselves, all together; none where the system does
/// not say.
std::optional<std::int64_t> browserMemory();

} // namespace lumaro
