// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Edits.h"

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/BoardLogic/Placing.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <ranges>
#include <utility>

namespace lumaro::Edits {
namespace {

Op rewritten(BoardItem item, Hand hand) {
    item.updatedAt = stamp(hand.now, item.updatedAt);
    item.setAuthor(hand.author);
    return {Upsert{std::move(item)}};
}

Point turned(Point arm, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {arm.x * std::cos(angle) - arm.y * std::sin(angle), arm.x * std::sin(angle) + arm.y * std::cos(angle)};
}

// Writes the item at its new place, and the doodles drawn on it where that place takes them.
std::vector<Op> carried(const Board& board, const BoardItem& before, BoardItem item, Hand hand) {
    const double turn = item.rotationDegrees - before.rotationDegrees;
    const double growth = BoardSpec::isValidScale(before.scale) ? item.scale / before.scale : 1;
    const Point from = before.center;
    const Point to = item.center;
    std::vector<Op> ops;
    ops.push_back(rewritten(std::move(item), hand));
    for (const auto& other : board.items) {
        if (!isDrawnOn(other, before.id)) continue;
        BoardItem doodle = other;
        doodle.center = to + turned(doodle.center - from, turn) * growth;
        doodle.rotationDegrees = BoardSpec::clampRotation(doodle.rotationDegrees + turn);
        doodle.scale = BoardSpec::clampScale(doodle.scale * growth);
        ops.push_back(rewritten(std::move(doodle), hand));
    }
    return ops;
}

// Edits one item of the board: `change` answers with the ops, or a fault.
template <class Change>
Result edit(const Board& board, const UUID& id, Change change) {
    const BoardItem* item = board.find(id);
    if (item == nullptr) return std::unexpected(EditFault::noSuchItem);
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

double snappedTilt(double degrees) {
    // Adding zero turns a negative zero into zero.
    const double snapped = std::round(degrees / BoardSpec::rotationSnapDegrees) * BoardSpec::rotationSnapDegrees + 0.0;
    return BoardSpec::clampRotation(snapped);
}

Point heldOnCanvas(Point place) {
    return {std::clamp(place.x, 0.0, BoardSpec::canvasSize.width),
            std::clamp(place.y, 0.0, BoardSpec::canvasSize.height)};
}

// A stacking value above all items but those left out. Nothing gets above an item at the very top of the range, which
// may come from a peer: a new item then stands level with it.
template <class LeftOut>
std::int64_t frontZ(const Board& board, LeftOut leftOut) {
    std::int64_t top = 0;
    bool found = false;
    for (const auto& item : board.items) {
        if (leftOut(item)) continue;
        top = found ? std::max(top, item.z) : item.z;
        found = true;
    }
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    if (!found) return 1;
    return top == highest ? highest : top + 1;
}

} // namespace

Result putUp(const Board& board, const UUID& id, Payload payload, std::optional<Point> at, Hand hand) {
    if (at && !isFinite(*at)) return std::unexpected(EditFault::notFinite);
    BoardItem item;
    item.id = id;
    item.payload = std::move(payload);
    item.center = at ? heldOnCanvas(*at) : BoardLogic::openSpot(item.naturalSize(), board);
    item.rotationDegrees = BoardLogic::seededTilt(id);
    item.z = frontZ(board, [](const BoardItem&) { return false; });
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
    return edit(board, id, [&](const BoardItem& before) -> Result {
        const auto rises = [&](const BoardItem& item) { return item.id == id || isDrawnOn(item, id); };
        auto z = frontZ(board, rises);
        // The item, then the doodles on it as they lie over one another.
        std::vector<BoardItem> risers{before};
        for (const auto& item : board.items) {
            if (item.id == id || !isDrawnOn(item, id)) continue;
            const auto drawn = std::ranges::subrange(risers.begin() + 1, risers.end());
            risers.insert(std::ranges::upper_bound(drawn, item.z, {}, &BoardItem::z), item);
        }
        std::vector<Op> ops;
        for (auto& item : risers) {
            item.z = z;
            if (z < std::numeric_limits<std::int64_t>::max()) ++z;
            ops.push_back(rewritten(std::move(item), hand));
        }
        return ops;
    });
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
