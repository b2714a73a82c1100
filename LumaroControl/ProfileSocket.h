// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace lumaro {

/// Where a process that has a profile listens, in the profile's folder.
namespace ProfileSocket {
inline constexpr std::string_view ofCommands = "socket";
inline constexpr std::string_view ofApplication = "app.socket";
} // namespace ProfileSocket

} // namespace lumaro
