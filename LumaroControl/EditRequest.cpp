// SPDX-License-Identifier: Apache-2.0
#include "LumaroControl/EditRequest.h"

#include "LumaroCore/Support/OneLine.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

template <class Make>
AskedVerb onItem(const Board& board, std::string_view prefix, Make make) {
    auto id = itemBeginningWith(board, prefix);
    if (!id) return std::unexpected(std::move(id.error()));
    return BoardVerb{make(*id)};
}

bool putsUp(const PendingBatch& batch, const UUID& id) {
    return std::ranges::any_of(batch.ops, [&](const Op& op) {
        const auto* upsert = std::get_if<Upsert>(&op.value);
        return upsert != nullptr && upsert->item.id == id;
    });
}

} // namespace

std::expected<UUID, std::string> itemBeginningWith(const Board& board, std::string_view prefix) {
    std::string lower{prefix};
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'F' ? char(c + 32) : c; });
    std::vector<UUID> found;
    for (const auto& item : board.items) {
        if (item.id.lowerString().starts_with(lower)) found.push_back(item.id);
    }
    if (found.size() == 1) return found.front();
    const auto name = "\"" + onOneLine(prefix) + "\"";
    if (found.empty()) return std::unexpected("no item begins with " + name);
    return std::unexpected(std::to_string(found.size()) + " items begin with " + name);
}

AskedVerb verbOf(const BoardRequest::PutUp& put, const Board& /*board*/) {
    return BoardVerb{BoardVerb::PutUp{put.id, put.item.payload, put.at}};
}

AskedVerb verbOf(const BoardRequest::Move& move, const Board& board) {
    return onItem(board, move.item, [&](const UUID& id) { return BoardVerb::Move{id, move.to}; });
}

AskedVerb verbOf(const BoardRequest::Turn& turn, const Board& board) {
    return onItem(board, turn.item, [&](const UUID& id) { return BoardVerb::Turn{id, turn.degrees}; });
}

AskedVerb verbOf(const BoardRequest::Resize& resize, const Board& board) {
    return onItem(board, resize.item, [&](const UUID& id) { return BoardVerb::Resize{id, resize.scale}; });
}

AskedVerb verbOf(const BoardRequest::ToFront& raised, const Board& board) {
    return onItem(board, raised.item, [](const UUID& id) { return BoardVerb::ToFront{id}; });
}

AskedVerb verbOf(const BoardRequest::ToBack& lowered, const Board& board) {
    return onItem(board, lowered.item, [](const UUID& id) { return BoardVerb::ToBack{id}; });
}

AskedVerb verbOf(const BoardRequest::TakeDown& gone, const Board& board) {
    return onItem(board, gone.item, [](const UUID& id) { return BoardVerb::TakeDown{id}; });
}

AskedVerb verbOf(const BoardRequest::Keep& kept, const Board& board) {
    return onItem(board, kept.item, [](const UUID& id) { return BoardVerb::Keep{id}; });
}

AskedVerb verbOf(const BoardRequest::Unkeep& unkept, const Board& board) {
    return onItem(board, unkept.item, [](const UUID& id) { return BoardVerb::Unkeep{id}; });
}

AskedVerb verbOf(const BoardRequest::Lock& locked, const Board& board) {
    return onItem(board, locked.item, [](const UUID& id) { return BoardVerb::Lock{id}; });
}

AskedVerb verbOf(const BoardRequest::Unlock& freed, const Board& board) {
    return onItem(board, freed.item, [](const UUID& id) { return BoardVerb::Unlock{id}; });
}

AskedVerb verbOf(const BoardRequest::SetBackground& wanted, const Board& /*board*/) {
    return BoardVerb{BoardVerb::SetBackground{wanted.background}};
}

std::string outputOf(const BoardVerb& verb) {
    const auto* put = std::get_if<BoardVerb::PutUp>(&verb.value);
    return put == nullptr ? "" : put->id.lowerString() + "\n";
}

std::vector<UUID> batchesAlreadyDoing(const BoardVerb& verb, const SharedBoard& board) {
    std::vector<UUID> batches;
    const auto* put = std::get_if<BoardVerb::PutUp>(&verb.value);
    if (put == nullptr) return batches;
    for (const auto& batch : board.pending()) {
        if (putsUp(batch, put->id)) batches.push_back(batch.batchId);
    }
    return batches;
}

} // namespace lumaro
