// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/Messages.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace lumaro {

/// What two people at one board would send: a board of notes first, about 470 bytes each, then one moved or rewritten
/// note at a time. Each side edits notes of its own and every version is newer than the one before it, so that the room
/// takes every edit, in whatever order the two sockets reach it.
class EditSource {
public:
    EditSource(std::uint64_t seed, std::size_t itemCount);

    /// Puts the whole board up.
    ClientMessage::Ops board(Instant now);
    /// One edit by this side.
    ClientMessage::Ops edit(PartnerID side, Instant now);

    /// The notes as the room must have them once every edit was taken, in the order of the board.
    const std::vector<BoardItem>& items() const { return items_; }

private:
    UUID freshId();

    std::mt19937_64 random_;
    std::vector<BoardItem> items_;
    std::size_t edits_ = 0;
};

} // namespace lumaro
