// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimStore.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {

StoreResult<std::optional<RoomRecord>> SimStore::loadRoom(std::string_view coupleId) {
    auto room = memory_.loadRoom(coupleId);
    if (!room || !*room) return room;
    auto& recent = (*room)->recentBatches;
    if (recent.size() > remembered_)
        recent.erase(recent.begin(), recent.end() - static_cast<std::ptrdiff_t>(remembered_));
    auto& board = (*room)->board;
    if (sabotage_ == Sabotage::tombstonesAreForgotten) board.tombstones.clear();
    if (sabotage_ == Sabotage::itemsComeByTheirIds) std::ranges::sort(board.items, {}, &BoardItem::id);
    return room;
}

// What a store with the fault would have made of it.
Commit SimStore::sabotaged(const Commit& commit) {
    auto made = commit;
    if (sabotage_ == Sabotage::batchesAreForgotten) made.batchId.reset();
    if (sabotage_ == Sabotage::threadIsForgotten) made.change.threadTiedAt.reset();
    if (sabotage_ == Sabotage::versionsAreNotCompared) {
        made.expectedVersion = memory_.loadRoom(commit.coupleId)->value_or(RoomRecord{}).version;
    }
    return made;
}

StoreResult<CommitOutcome> SimStore::commit(const Commit& commit) {
    const auto before = memory_.loadRoom(commit.coupleId);
    const auto outcome = sabotage_ == Sabotage::none ? memory_.commit(commit) : memory_.commit(sabotaged(commit));
    if (!outcome) return outcome;
    if (*outcome == CommitOutcome::duplicateBatch) coverage_.note(Met::duplicatesBeyondMemory);
    if (*outcome == CommitOutcome::stored) {
        if (commit.batchId && sabotage_ == Sabotage::idsOutliveBoards) commits_.push_back(commit);
        witness_.stored(commit, (*before)->board, (*memory_.loadRoom(commit.coupleId))->board);
    }
    return outcome;
}

StoreResult<bool> SimStore::sweep(Instant now) {
    return memory_.sweep(sabotage_ == Sabotage::sweepsForgetAYear ? now + std::chrono::days{390} : now);
}

void SimStore::makeDurable() {
    static_cast<void>(memory_.commitTransaction());
    witness_.transactionIsDurable();
    commits_.clear();
}

void SimStore::undo() {
    memory_.rollBack();
    witness_.transactionIsUndone();
    if (sabotage_ == Sabotage::idsOutliveBoards) keepIds();
    commits_.clear();
}

void SimStore::keepIds() {
    for (auto& commit : commits_) {
        const auto room = memory_.loadRoom(commit.coupleId)->value_or(RoomRecord{});
        commit.expectedVersion = room.version;
        commit.change = {};
        commit.change.background = room.board.background;
        commit.change.threadTiedAt = room.board.threadTiedAt;
        commit.change.updatedAt = room.board.updatedAt;
        static_cast<void>(memory_.commit(commit));
    }
}

} // namespace lumaro::simulation
