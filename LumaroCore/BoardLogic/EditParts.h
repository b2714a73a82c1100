// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"

#include <expected>
#include <optional>
#include <span>
#include <vector>

// What edits are made of, and what is made of several. Pure, as they are.
namespace lumaro::Edits {

/// Whether this is a doodle drawn on that item.
bool isDrawnOn(const BoardItem& item, const UUID& id);

/// Whether this is drawn on an item that is locked.
bool isOnLocked(const Board& board, const Payload& payload);
/// Whether people's hands leave it as it is: it is locked, or part of what is.
bool isLocked(const Board& board, const BoardItem& item);

/// The instant of a version that replaces one of `previous`.
Instant stamp(Instant now, Instant previous);
/// The item as a version newer than the one on the board, than its tombstone, and than `buriedAt`, which a board that
/// came from the room does not remember.
Op written(const Board& board, BoardItem item, Hand hand, std::optional<Instant> buriedAt = std::nullopt);

/// Puts the upserts in place, asking no rule: a board on which the next edit of the same act is made.
void overlay(Board& board, std::span<const Op> ops);
/// The ops without those that would change nothing but author and instants.
std::vector<Op> withoutIdle(std::vector<Op> ops, const Board& board);
/// The items of `after` that are not on `before`, or look different there, each written over `before` once.
std::vector<Op> changes(const Board& before, const Board& after, Hand hand);

/// Where an item is let go; what is absent stays as the board has it.
struct Placement {
    std::optional<Point> center{};
    std::optional<double> rotationDegrees{};
    std::optional<double> scale{};
};
/// The place on the canvas nearest to this one.
Point heldOnCanvas(Point place);
/// The item instead of the one that was, and the doodles drawn on it where its new place takes them.
std::vector<Op> carried(const Board& board, const BoardItem& before, BoardItem item, Hand hand);
/// The board while the item is held there: moved, turned and scaled as `Edits` do, with the doodles on it.
std::expected<Board, EditFault> held(const Board& board, const UUID& id, const Placement& placement, Hand hand);
/// The item let go there, in front of all others: one version of each item that looks different for it.
Result place(const Board& board, const UUID& id, const Placement& placement, Hand hand);

/// When a note comes down that gets its lifespan now.
Instant lifespanFrom(Instant now);
/// The payload as something put up now holds it: a note that is to come down does so a lifespan from now.
Payload withFreshLifespan(Payload payload, Instant now);

} // namespace lumaro::Edits
