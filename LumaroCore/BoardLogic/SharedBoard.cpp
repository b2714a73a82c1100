// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/SharedBoard.h"

#include "LumaroCore/Support/Mutant.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {

SharedBoard::SharedBoard(Board confirmed, std::vector<PendingBatch> pending, Instant now)
    : confirmed_(std::move(confirmed)), shown_(confirmed_),
      pending_(std::move_iterator{pending.begin()}, std::move_iterator{pending.end()}) {
    for (const auto& batch : pending_) show(batch, now);
}

void SharedBoard::welcome(Board board, Instant now) {
    confirmed_ = std::move(board);
    if (mutant(Mutant::welcomeWipesPending)) pending_.clear();
    project(now);
    if (mutant(Mutant::welcomeHidesPending)) shown_ = confirmed_;
}

void SharedBoard::tieThread(Instant tiedAt) {
    confirmed_.threadTiedAt = tiedAt;
    shown_.threadTiedAt = tiedAt;
}

std::vector<RejectedOp> SharedBoard::enqueue(PendingBatch batch, Instant now) {
    pending_.push_back(std::move(batch));
    return show(pending_.back(), now);
}

void SharedBoard::acked(const UUID& batchId, Instant now) {
    const auto batch = std::ranges::find(pending_, batchId, &PendingBatch::batchId);
    if (batch == pending_.end()) return;
    if (!mutant(Mutant::ackConfirmsNothing)) {
        confirmed_ = BoardLogic::apply(batch->ops, std::move(confirmed_), now).board;
    }
    // Acks mostly come in the order of sending. The oldest batch was the first over `confirmed`, and is now its last:
    // the board shown is the same, and a long queue drains without showing every batch anew for every ack.
    const bool isOldest = batch == pending_.begin();
    unsound_.erase(batchId);
    pending_.erase(batch);
    if (!isOldest) project(now);
}

void SharedBoard::withdraw(const UUID& batchId, Instant now) {
    if (std::erase_if(pending_, [&](const auto& batch) { return batch.batchId == batchId; }) > 0) project(now);
}

void SharedBoard::applyRemote(std::span<const Op> ops, Instant now) {
    confirmed_ = BoardLogic::apply(ops, std::move(confirmed_), now).board;
    project(now);
}

std::vector<RejectedOp> SharedBoard::show(const PendingBatch& batch, Instant now) {
    auto result = BoardLogic::apply(batch.ops, std::move(shown_), now);
    shown_ = std::move(result.board);
    if (std::ranges::any_of(result.rejected, BoardLogic::isOfTheOp, &RejectedOp::reason))
        unsound_.insert(batch.batchId);
    return std::move(result.rejected);
}

// Thousands of batches may wait, and the partner goes on.
void SharedBoard::project(Instant now) {
    shown_ = confirmed_;
    for (const auto& batch : pending_) {
        if (unsound_.contains(batch.batchId)) {
            show(batch, now);
        } else {
            BoardLogic::reapply(batch.ops, shown_, now);
        }
    }
}

} // namespace lumaro
