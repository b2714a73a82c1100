// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/UndoStep.h"

#include <cstddef>
#include <cstdint>
#include <deque>

namespace lumaro {

/// The acts of one person on one board that can be taken back, and those taken back that can be done again. A value; it
/// survives no restart.
///
/// Taking a step back writes new versions of old contents. Every step that knew the old version then knows the new one
/// in its place, so that steps can be taken back one after the other, and still none reaches behind a version of the
/// partner's that lies between two of them.
class UndoHistory {
public:
    enum class Way : std::uint8_t { undo, redo };
    /// Steps it remembers; the oldest go first.
    static constexpr std::size_t limit = 100;

    bool can(Way way) const { return !stack(way).empty(); }

    /// An act that went out as this batch. Acts of one text editing on one version after the other become one step.
    void record(const UUID& batch, const Board& before, const Board& after,
                std::optional<std::uint64_t> session = std::nullopt);

    /// The ops that take the next step back, or do it again. A step that cannot be any more is forgotten: no later
    /// version becomes its own again.
    std::expected<std::vector<Op>, UndoFault> next(Way way, const Board& board, Hand hand);
    /// The ops of `next` went out as this batch, and `after` is shown.
    void went(Way way, const UUID& batch, const Board& after);

    /// The batch could not be stored: what it did is not on the board any more.
    void withdraw(const UUID& batch);
    void clear();

private:
    using Stack = std::deque<UndoStep>; // the next one last

    Stack& stack(Way way) { return way == Way::undo ? done_ : undone_; }
    const Stack& stack(Way way) const { return way == Way::undo ? done_ : undone_; }
    bool extendsLast(const UndoStep& step) const;
    void rewrite(const BoardItem& old, const BoardItem& now);

    Stack done_;
    Stack undone_; // each as its taking back was: from what it left to what was before
};

} // namespace lumaro
