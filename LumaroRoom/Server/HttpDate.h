// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// An instant as it stands in "Date" (RFC 9110, 5.6.7), to the second: "Sun, 06 Nov 1994 08:49:37 GMT".
std::string httpDate(Instant instant);

/// None for anything but that form.
std::optional<Instant> parseHttpDate(std::string_view text);

} // namespace lumaro
