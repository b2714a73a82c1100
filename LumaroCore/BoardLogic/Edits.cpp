// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Edits.h"

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/BoardLogic/Placing.h"
#include "LumaroCore/BoardLogic/Stacking.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace lumaro::Edits {
namespace {

Op rewritten(BoardItem item, Hand hand) {
    item.updatedAt = stamp(hand.now, item.updatedAt);
    item.setAuthor(hand.author);
    return {Upsert{std::move(item)}};
}

// Edits one item of the board: `change` answers with the ops, or a fault.
template <class Change>
Result edit(const Board& board, const UUID& id, Change change) {
    const BoardItem* item = board.find(id);
    if (item == nullptr) return std::unexpected(EditFault::noSuchItem);
    if (isLocked(board, *item)) return std::unexpected(EditFault::locked);
    return change(*item);
}

template <class Change>
Result editNote(const Board& board, const UUID& id, Hand hand, Change change) {
    return edit(board, id, [&](BoardItem item) -> Result {
        const auto* note = item.payload.as<NotePayload>();
        if (note == nullptr) return std::unexpected(EditFault::wrongKind);
        NotePayload changed = *note;
        change(changed);
        item.payload = Payload{std::move(changed)};
        return std::vector{rewritten(std::move(item), hand)};
    });
}

Result setLocked(const Board& board, const UUID& id, bool toLocked, Hand hand) {
    const auto* const found = board.find(id);
    if (found == nullptr) return std::unexpected(EditFault::noSuchItem);
    BoardItem item = *found;
    item.isLocked = toLocked;
    return std::vector{rewritten(std::move(item), hand)};
}

double snappedTilt(double degrees) {
    // Adding zero turns a negative zero into zero.
    const double snapped = std::round(degrees / BoardSpec::rotationSnapDegrees) * BoardSpec::rotationSnapDegrees + 0.0;
    return BoardSpec::clampRotation(snapped);
}

// A stacking value above all items. Nothing gets above an item at the very top of the range, which may come from a
// peer: a new item then stands level with it.
std::int64_t frontZ(const Board& board) {
    if (board.items.empty()) return 1;
    const auto top = std::ranges::max(board.items, {}, &BoardItem::z).z;
    return top == std::numeric_limits<std::int64_t>::max() ? top : top + 1;
}

} // namespace

Result putUp(const Board& board, const UUID& id, Payload payload, std::optional<Point> at, Hand hand) {
    if (at && !isFinite(*at)) return std::unexpected(EditFault::notFinite);
    if (isOnLocked(board, payload)) return std::unexpected(EditFault::locked);
    BoardItem item;
    item.id = id;
    item.payload = std::move(payload);
    item.center = at ? heldOnCanvas(*at) : BoardLogic::openSpot(item.naturalSize(), board);
    item.rotationDegrees = BoardLogic::seededTilt(id);
    item.z = frontZ(board);
    item.author = hand.author;
    item.createdAt = Wire::truncatedToMilliseconds(hand.now);
    item.updatedAt = item.createdAt;
    // Putting up again what was taken down edits its tombstone.
    const auto grave = board.tombstones.find(id);
    if (grave != board.tombstones.end()) item.updatedAt = stamp(hand.now, grave->second);
    return std::vector{Op{Upsert{std::move(item)}}};
}

Result move(const Board& board, const UUID& id, Point center, Hand hand) {
    if (!isFinite(center)) return std::unexpected(EditFault::notFinite);
    return edit(board, id, [&](const BoardItem& before) -> Result {
        BoardItem item = before;
        item.center = heldOnCanvas(center);
        return carried(board, before, std::move(item), hand);
    });
}

Result turn(const Board& board, const UUID& id, double degrees, Hand hand) {
    if (!std::isfinite(degrees)) return std::unexpected(EditFault::notFinite);
    return edit(board, id, [&](const BoardItem& before) -> Result {
        BoardItem item = before;
        item.rotationDegrees = snappedTilt(degrees);
        return carried(board, before, std::move(item), hand);
    });
}

Result resize(const Board& board, const UUID& id, double scale, Hand hand) {
    if (!std::isfinite(scale)) return std::unexpected(EditFault::notFinite);
    return edit(board, id, [&](const BoardItem& before) -> Result {
        if (!BoardSpec::canResize(before.kind())) return std::unexpected(EditFault::cannotResize);
        BoardItem item = before;
        item.scale = BoardSpec::settleScale(scale);
        return carried(board, before, std::move(item), hand);
    });
}

Result raise(const Board& board, const UUID& id, Hand hand) {
    return stack(board, {&id, 1}, StackEnd::front, hand);
}

Result lower(const Board& board, const UUID& id, Hand hand) {
    return stack(board, {&id, 1}, StackEnd::back, hand);
}

Result changePayload(const Board& board, const UUID& id, Payload payload, Hand hand) {
    return edit(board, id, [&](BoardItem item) -> Result {
        if (item.kind() != payload.kind()) return std::unexpected(EditFault::wrongKind);
        item.payload = std::move(payload);
        return std::vector{rewritten(std::move(item), hand)};
    });
}

Result changeText(const Board& board, const UUID& id, PMNode text, Hand hand) {
    return editNote(board, id, hand, [&](NotePayload& note) { note.pm = std::move(text); });
}

Result keep(const Board& board, const UUID& id, Hand hand) {
    return editNote(board, id, hand, [](NotePayload& note) { note.expiresAt.reset(); });
}

Result unkeep(const Board& board, const UUID& id, Hand hand) {
    return editNote(board, id, hand, [&](NotePayload& note) { note.expiresAt = lifespanFrom(hand.now); });
}

Result lock(const Board& board, const UUID& id, Hand hand) {
    return setLocked(board, id, true, hand);
}

Result unlock(const Board& board, const UUID& id, Hand hand) {
    return setLocked(board, id, false, hand);
}

Result takeDown(const Board& board, const UUID& id, Hand hand) {
    return edit(board, id, [&](const BoardItem& item) -> Result {
        // One instant for the item and the doodles that go with it: it is after the last version of each.
        Instant deletedAt = stamp(hand.now, item.updatedAt);
        for (const auto& other : board.items) {
            if (isDrawnOn(other, id)) deletedAt = stamp(deletedAt, other.updatedAt);
        }
        return std::vector{Op{Delete{.itemId = id, .deletedAt = deletedAt}}};
    });
}

std::vector<Op> setBackground(BackgroundID background) {
    return {Op{SetBackground{background}}};
}

std::vector<std::vector<Op>> batches(std::vector<Op> ops) {
    std::vector<std::vector<Op>> result;
    for (auto& op : ops) {
        if (result.empty() || result.back().size() == BoardSpec::maxOpsPerBatch) result.emplace_back();
        result.back().push_back(std::move(op));
    }
    return result;
}

} // namespace lumaro::Edits
