// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/Plane.h"

#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

// Instants and places as people write and read them in a terminal.

/// "2026-06-01", "2026-06-01 8:30" or "2026-06-01T18:30:15", in this machine's time zone, or in UTC with a "Z" behind.
std::optional<Instant> parseMoment(std::string_view text);
/// "2026-06-01 18:30", in this machine's time zone.
std::string momentText(Instant instant);
/// "18:30:15", in this machine's time zone.
std::string timeOfDayText(Instant instant);

/// "640,480".
std::optional<Point> parsePoint(std::string_view text);

} // namespace lumaro
