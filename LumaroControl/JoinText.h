// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string_view>

namespace lumaro {

// What stands in the way of a join before anybody is asked.

/// Why the text can be neither a code nor a link; none when it may be one. The service counts a wrong code, so it
/// hears of none that is incomplete.
std::optional<std::string_view> faultOfCodeOrLink(std::string_view text);

/// For a join while on a board, without a word about leaving it.
inline constexpr std::string_view joinWhileOnABoard =
    "this profile is on a board: `leave` it first, or join with --leave, which leaves it once the join has worked";

} // namespace lumaro
