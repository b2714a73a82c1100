// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace lumaro {

/// Asks the application that has this profile to show its board, and to join through the link. Whether it will.
bool handOver(const std::string& profile, const std::optional<std::string>& link);

} // namespace lumaro
