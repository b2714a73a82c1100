// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Room/BoardChange.h"

#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

// What a batch may do away with, kept so that the change can be told afterwards without a second board.
struct Before {
    std::vector<UUID> buried;  // items the batch may put up that have a tombstone
    std::vector<UUID> order;   // every item, when the batch may take any down
    std::vector<UUID> doodles; // those drawn on items that the batch may take down

    Before(std::span<const Op> ops, const Board& board) {
        for (const auto& op : ops) {
            std::visit(Overloaded{[&](const Upsert& upsert) { willPut(upsert.item.id, board); },
                                  [&](const Delete& deletion) { willTakeDown(deletion.itemId, board); },
                                  [](const SetBackground& /*op*/) {}},
                       op.value);
        }
    }

private:
    void willPut(const UUID& id, const Board& board) {
        if (board.tombstones.contains(id)) buried.push_back(id);
    }

    void willTakeDown(const UUID& id, const Board& board) {
        for (const auto& item : board.items) {
            const auto* doodle = item.payload.as<DoodlePayload>();
            if (doodle != nullptr && doodle->on == id) doodles.push_back(item.id);
        }
        if (!order.empty()) return;
        order.reserve(board.items.size());
        for (const auto& item : board.items) order.push_back(item.id);
    }
};

// The items whose place, version or tombstone may be another one, in the order of ids.
std::vector<UUID> touchedBy(std::span<const Op> applied, const Before& before) {
    auto touched = before.doodles;
    for (const auto& op : applied) {
        std::visit(Overloaded{[&](const Upsert& upsert) { touched.push_back(upsert.item.id); },
                              [&](const Delete& deletion) { touched.push_back(deletion.itemId); },
                              [](const SetBackground& /*op*/) {}},
                   op.value);
    }
    std::ranges::sort(touched);
    touched.erase(std::ranges::unique(touched).begin(), touched.end());
    return touched;
}

// What stays on a board keeps its order, and what comes stands behind it: an item that is not the next one in its turn
// has left its place.
std::vector<UUID> removedFrom(const std::vector<UUID>& order, const Board& board) {
    std::vector<UUID> removed;
    auto next = board.items.begin();
    for (const auto& id : order) {
        if (next != board.items.end() && next->id == id) {
            ++next;
        } else {
            removed.push_back(id);
        }
    }
    return removed;
}

BoardChange changeBy(std::span<const Op> applied, const Before& before, const Board& board) {
    auto change = changeTo(board);
    if (applied.empty()) return change;
    const auto touched = touchedBy(applied, before);
    change.removed = removedFrom(before.order, board);
    for (const auto& item : board.items) {
        if (std::ranges::binary_search(touched, item.id)) change.upserted.push_back(item);
    }
    for (const auto& id : touched) {
        const auto grave = board.tombstones.find(id);
        if (grave != board.tombstones.end()) {
            change.buried.push_back({.itemId = id, .deletedAt = grave->second});
        } else if (std::ranges::find(before.buried, id) != before.buried.end()) {
            change.unburied.push_back(id);
        }
    }
    return change;
}

} // namespace

BoardChange changeTo(const Board& board) {
    BoardChange change;
    change.background = board.background;
    change.threadTiedAt = board.threadTiedAt;
    change.updatedAt = board.updatedAt;
    return change;
}

AppliedBatch applyBatch(std::span<const Op> ops, Board& board, Instant now) {
    const Before before{ops, board};
    auto result = BoardLogic::apply(ops, std::move(board), now);
    board = std::move(result.board);
    auto change = changeBy(result.applied, before, board);
    return {.applied = std::move(result.applied), .rejected = std::move(result.rejected), .change = std::move(change)};
}

} // namespace lumaro
