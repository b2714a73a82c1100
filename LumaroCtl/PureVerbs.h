// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Instant.h"
#include "LumaroCore/Support/JsonError.h"
#include "LumaroCore/Support/Plane.h"
#include "LumaroCore/Support/UUID.h"

#include <expected>
#include <string>
#include <string_view>

namespace lumaro {

// Verbs that turn a JSON text, or an argument, into a text without its last line end.

using VerbResult = std::expected<std::string, DecodeError>;

/// A board in canonical form.
VerbResult canonicalBoard(std::string_view board);
/// The plain text of a note document.
VerbResult plainNote(std::string_view document);
/// What the block card shows at an instant, of a pomodoro payload.
VerbResult pomodoroReading(std::string_view payload, Instant at);
/// Where a new item of this size lands on a board.
VerbResult landingSpot(std::string_view board, Size size);
/// The tilt of a new item in degrees, in its shortest form.
std::string tiltText(const UUID& id);

} // namespace lumaro
