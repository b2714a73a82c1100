// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace lumaro {

/// Asks the application that has this profile to show its board, and to join through the link. Whether it will.
bool handOver(const std::string& profile, const std::optional<std::string>& link);
/// Asks it to open the composer of a quick note. Whether it will.
bool handOverQuickNote(const std::string& profile);

} // namespace lumaro
