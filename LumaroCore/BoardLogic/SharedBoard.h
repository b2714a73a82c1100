// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Apply.h"

#include <deque>
#include <set>
#include <span>
#include <vector>

namespace lumaro {

/// A batch of one's own that the room has not acknowledged yet.
struct PendingBatch {
    UUID batchId;
    std::vector<Op> ops;

    bool operator==(const PendingBatch&) const = default;
};

/// A device's view of the board: what the room has confirmed, and that with one's own waiting batches over it.
///
/// The room does not echo a batch to its author but acknowledges it, and sends acks and partner ops in the order of its
/// commits. Folding both into `confirmed` in that order makes it the room's board; `shown` is `confirmed` with the
/// pending batches applied in the order they were made, so that an edit is on screen at once and no message wipes it
/// off.
///
/// A plain value, fed by one thread. It survives no restart: it is built anew from the last snapshot and the outbox.
class SharedBoard {
public:
    SharedBoard() = default;
    /// What a device knows when it starts: the last board of the room, and the batches of its outbox, oldest first.
    SharedBoard(Board confirmed, std::vector<PendingBatch> pending, Instant now);

    const Board& confirmed() const { return confirmed_; }
    const Board& shown() const { return shown_; }
    const std::deque<PendingBatch>& pending() const { return pending_; }

    /// The room's whole board: it replaces `confirmed`; what waits stays on screen.
    void welcome(Board board, Instant now);
    /// The red thread was tied.
    void tieThread(Instant tiedAt);
    /// Shows a batch of one's own at once. Answers with the ops that the shown board refuses: the room most likely will
    /// too.
    std::vector<RejectedOp> enqueue(PendingBatch batch, Instant now);
    /// The room has taken the batch. One that is not pending is ignored.
    void acked(const UUID& batchId, Instant now);
    /// The batch could not be stored and will never be sent: it is shown no more.
    void withdraw(const UUID& batchId, Instant now);
    /// Ops of the partner, or of another device of one's own, that took effect in the room. `author` does not matter
    /// here.
    void applyRemote(std::span<const Op> ops, Instant now);

private:
    std::vector<RejectedOp> show(const PendingBatch& batch, Instant now);
    void project(Instant now);

    Board confirmed_;
    Board shown_;
    std::deque<PendingBatch> pending_;
    std::set<UUID> unsound_; ///< batches with ops that no board takes
};

} // namespace lumaro
