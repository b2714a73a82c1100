// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/EditorActs.h"

#include "LumaroCore/BoardLogic/Expiry.h"

namespace lumaro {

EditorDone doneOf(const EditorAct& act) {
    if (!act) return std::unexpected(act.error());
    return {};
}

std::expected<UUID, ActFault> EditorActs::act(std::vector<Op> ops) {
    auto batch = ports_.board.act(std::move(ops));
    if (batch) acted_();
    return batch;
}

EditorAct EditorActs::perform(std::expected<std::vector<Op>, EditorFault> ops, std::optional<std::uint64_t> session) {
    if (!ops) return std::unexpected(ops.error());
    auto wanted = Edits::withoutIdle(std::move(*ops), board());
    if (wanted.empty()) return std::nullopt;
    if (BoardLogic::droppingExpired(wanted, ports_.clock.now()).size() != wanted.size()) {
        return std::unexpected(UndoFault::expired);
    }
    const Board before = board();
    const auto batch = act(std::move(wanted));
    if (!batch) return std::unexpected(batch.error());
    history_.record(*batch, before, board(), session);
    return *batch;
}

EditorAct EditorActs::takeBack(UndoHistory::Way way) {
    auto ops = history_.next(way, board(), hand());
    if (!ops) return std::unexpected(ops.error());
    const auto batch = act(std::move(*ops));
    if (!batch) return std::unexpected(batch.error());
    history_.went(way, *batch, board());
    return *batch;
}

} // namespace lumaro
