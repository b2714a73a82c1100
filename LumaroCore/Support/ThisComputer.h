// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// What texts for people call this computer. The texts themselves are of one system; where people read them on another,
/// this one word is put in.
inline constexpr std::string_view textsComputer = "this mac";
inline constexpr std::string_view anyComputer = "this computer";

/// The text as it is read on another system than the one that it was written for.
std::string onAnyComputer(std::string_view text);

} // namespace lumaro
