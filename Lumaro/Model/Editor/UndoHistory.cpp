// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/UndoHistory.h"

#include <algorithm>
#include <utility>

namespace lumaro {

void UndoHistory::record(const UUID& batch, const Board& before, const Board& after,
                         std::optional<std::uint64_t> session) {
    UndoStep step = stepBetween(before, after);
    if (step.isEmpty()) return;
    step.batches = {batch};
    step.session = session;
    undone_.clear();
    if (extendsLast(step)) {
        done_.back().items.front().after = std::move(step.items.front().after);
        done_.back().batches.push_back(batch);
        return;
    }
    done_.push_back(std::move(step));
    if (done_.size() > limit) done_.pop_front();
}

bool UndoHistory::extendsLast(const UndoStep& step) const {
    if (done_.empty() || !step.session || done_.back().session != step.session) return false;
    if (done_.back().items.size() != 1 || step.items.size() != 1) return false;
    const auto& last = done_.back().items.front();
    const auto& next = step.items.front();
    return last.after && next.before && isSameVersion(*last.after, *next.before);
}

std::expected<std::vector<Op>, UndoFault> UndoHistory::next(Way way, const Board& board, Hand hand) {
    auto& steps = stack(way);
    if (steps.empty()) {
        return std::unexpected(way == Way::undo ? UndoFault::nothingToUndo : UndoFault::nothingToRedo);
    }
    auto ops = takingBack(steps.back(), board, hand);
    if (!ops) steps.pop_back();
    return ops;
}

void UndoHistory::went(Way way, const UUID& batch, const Board& after) {
    auto& steps = stack(way);
    if (steps.empty()) return;
    UndoStep step = std::move(steps.back());
    steps.pop_back();
    step.batches = {batch};
    if (step.background) std::swap(step.background->before, step.background->after);
    for (auto& change : step.items) {
        const auto restored = std::exchange(change.before, std::move(change.after));
        const auto* now = after.find(change.id);
        change.after = now == nullptr ? std::nullopt : std::optional{*now};
        if (restored && now != nullptr) rewrite(*restored, *now);
        const auto grave = after.tombstones.find(change.id);
        if (grave != after.tombstones.end()) change.buriedAt = grave->second;
    }
    stack(way == Way::undo ? Way::redo : Way::undo).push_back(std::move(step));
}

void UndoHistory::rewrite(const BoardItem& old, const BoardItem& now) {
    for (auto* steps : {&done_, &undone_}) {
        for (auto& step : *steps) {
            for (auto& change : step.items) {
                for (auto* version : {&change.before, &change.after}) {
                    if (*version && isSameVersion(**version, old)) *version = now;
                }
            }
        }
    }
}

void UndoHistory::withdraw(const UUID& batch) {
    const auto isOf = [&](const UndoStep& step) {
        return std::ranges::find(step.batches, batch) != step.batches.end();
    };
    std::erase_if(done_, isOf);
    std::erase_if(undone_, isOf);
}

void UndoHistory::clear() {
    done_.clear();
    undone_.clear();
}

} // namespace lumaro
