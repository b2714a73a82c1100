// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"

#include <optional>
#include <span>
#include <vector>

namespace lumaro {

/// The medium that a payload shows: only a photo and a sticker have one.
std::optional<UUID> mediumOf(const Payload& payload);

/// The media that ops put up, in their order; one that several ops name stands there as often.
std::vector<UUID> mediaNamedBy(std::span<const Op> ops);
/// The media of a board's items, likewise.
std::vector<UUID> mediaNamedBy(const Board& board);

} // namespace lumaro
