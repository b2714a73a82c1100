// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/UndoStep.h"

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Support/Mutant.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {
namespace {

std::optional<BoardItem> itemOn(const Board& board, const UUID& id) {
    const auto* item = board.find(id);
    return item == nullptr ? std::nullopt : std::optional{*item};
}

std::optional<Instant> burialOn(const Board& board, const UUID& id) {
    const auto grave = board.tombstones.find(id);
    return grave == board.tombstones.end() ? std::nullopt : std::optional{grave->second};
}

bool touches(const UndoStep& step, const UUID& id) {
    return std::ranges::find(step.items, id, &ItemChange::id) != step.items.end();
}

bool isAsLeft(const ItemChange& change, const Board& board) {
    if (mutant(Mutant::undoGoesOverOthers)) return true;
    const auto* item = board.find(change.id);
    if (item == nullptr || !change.after) return item == nullptr && !change.after;
    return isSameVersion(*item, *change.after);
}

// Taking the change back takes the item away from where the doodles on it are drawn.
bool leavesItsPlace(const ItemChange& change) {
    if (!change.after) return false;
    if (!change.before) return true;
    return change.before->center != change.after->center ||
           change.before->rotationDegrees != change.after->rotationDegrees ||
           change.before->scale != change.after->scale;
}

bool wasDrawnOnSince(const UndoStep& step, const ItemChange& change, const Board& board) {
    return leavesItsPlace(change) && std::ranges::any_of(board.items, [&](const BoardItem& item) {
               return Edits::isDrawnOn(item, change.id) && !touches(step, item.id);
           });
}

bool lacksItsSurface(const UndoStep& step, const ItemChange& change, const Board& board) {
    if (change.after || !change.before) return false;
    const auto* doodle = change.before->payload.as<DoodlePayload>();
    if (doodle == nullptr || !doodle->on || board.find(*doodle->on) != nullptr) return false;
    const auto comesBack = [&](const ItemChange& other) { return other.id == *doodle->on && other.before; };
    return std::ranges::none_of(step.items, comesBack);
}

// What was locked since, or is drawn on what was, stays as it is; a lock itself is the step's to take back.
bool isUnderALock(const UndoStep& step, const ItemChange& change, const Board& board) {
    const auto* const item = board.find(change.id);
    const auto& payload = item != nullptr ? item->payload : change.before ? change.before->payload : Payload{};
    const auto* const doodle = payload.as<DoodlePayload>();
    return doodle != nullptr && doodle->on && !touches(step, *doodle->on) && Edits::isOnLocked(board, payload);
}

std::optional<UndoFault> obstacle(const UndoStep& step, const Board& board, Instant now) {
    if (step.background && step.background->after != board.background) return UndoFault::changedSince;
    for (const auto& change : step.items) {
        if (!isAsLeft(change, board) || wasDrawnOnSince(step, change, board) || lacksItsSurface(step, change, board) ||
            isUnderALock(step, change, board)) {
            return UndoFault::changedSince;
        }
    }
    const auto hasExpired = [&](const ItemChange& change) { return change.before && change.before->hasExpired(now); };
    if (std::ranges::any_of(step.items, hasExpired)) return UndoFault::expired;
    return std::nullopt;
}

} // namespace

bool isSameVersion(const BoardItem& one, const BoardItem& other) {
    return one.id == other.id && one.author == other.author && one.updatedAt == other.updatedAt;
}

UndoStep stepBetween(const Board& before, const Board& after) {
    UndoStep step;
    for (const auto& item : before.items) {
        auto now = itemOn(after, item.id);
        if (now == item) continue;
        const auto buriedAt = now ? std::nullopt : burialOn(after, item.id);
        step.items.push_back({.id = item.id, .before = item, .after = std::move(now), .buriedAt = buriedAt});
    }
    for (const auto& item : after.items) {
        if (before.find(item.id) != nullptr) continue;
        step.items.push_back(
            {.id = item.id, .before = std::nullopt, .after = item, .buriedAt = burialOn(before, item.id)});
    }
    if (before.background != after.background) step.background = {before.background, after.background};
    return step;
}

std::expected<std::vector<Op>, UndoFault> takingBack(const UndoStep& step, const Board& board, Hand hand) {
    if (const auto fault = obstacle(step, board, hand.now)) return std::unexpected(*fault);
    std::vector<Op> ops;
    if (step.background) ops = Edits::setBackground(step.background->before);
    for (const auto& change : step.items) {
        if (change.before) {
            ops.push_back(Edits::written(board, *change.before, hand, change.buriedAt));
        } else if (auto down = Edits::takeDown(board, change.id, hand)) {
            std::ranges::move(*down, std::back_inserter(ops));
        }
    }
    return ops;
}

} // namespace lumaro
