// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace lumaro {

/// The name of a place as names are sorted and compared: `folded`, a hyphen, slash, comma or bracket as a gap between
/// words, no full stops, apostrophes and quotation marks, single spaces between words alone, and plain letters for
/// those that have none of their own on most keyboards: "Xi’an" is "xian", "Aix-en-Provence" "aix en provence", "Łódź"
/// "lodz". Empty when it is not UTF-8. Data/Places/pack has the same rule.
std::string nameKey(std::string_view name);

} // namespace lumaro
