// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/BoardVerb.h"

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/BoardLogic/Stacking.h"

#include <utility>

namespace lumaro {
namespace {

using Edits::StackEnd;

Edits::Result putUpOnce(const BoardVerb::PutUp& put, const Board& board, Hand hand) {
    if (board.find(put.id) != nullptr || board.tombstones.contains(put.id)) return std::vector<Op>{};
    return Edits::putUp(board, put.id, Edits::withFreshLifespan(put.payload, hand.now), put.at, hand);
}

// Each verb by the edit that it is.
struct Meaning {
    const Board& board;
    Hand hand;

    Edits::Result operator()(const BoardVerb::PutUp& put) const { return putUpOnce(put, board, hand); }
    Edits::Result operator()(const BoardVerb::Move& move) const {
        return Edits::place(board, move.item, {.center = move.to}, hand);
    }
    Edits::Result operator()(const BoardVerb::Turn& turn) const {
        return Edits::place(board, turn.item, {.rotationDegrees = turn.degrees}, hand);
    }
    Edits::Result operator()(const BoardVerb::Resize& resize) const {
        return Edits::place(board, resize.item, {.scale = resize.scale}, hand);
    }
    Edits::Result operator()(const BoardVerb::ToFront& raised) const { return stacked(raised.item, StackEnd::front); }
    Edits::Result operator()(const BoardVerb::ToBack& lowered) const { return stacked(lowered.item, StackEnd::back); }
    Edits::Result operator()(const BoardVerb::TakeDown& gone) const { return Edits::takeDown(board, gone.item, hand); }
    Edits::Result operator()(const BoardVerb::Keep& kept) const { return Edits::keep(board, kept.item, hand); }
    Edits::Result operator()(const BoardVerb::Unkeep& unkept) const { return Edits::unkeep(board, unkept.item, hand); }
    Edits::Result operator()(const BoardVerb::Lock& locked) const { return Edits::lock(board, locked.item, hand); }
    Edits::Result operator()(const BoardVerb::Unlock& freed) const { return Edits::unlock(board, freed.item, hand); }
    Edits::Result operator()(const BoardVerb::SetBackground& wanted) const {
        return Edits::setBackground(wanted.background);
    }

private:
    Edits::Result stacked(const UUID& id, StackEnd end) const {
        auto ops = Edits::stack(board, {&id, 1}, end, hand);
        return ops && Edits::isStacked(board, {&id, 1}, end) ? std::vector<Op>{} : ops;
    }
};

} // namespace

Edits::Result opsOf(const BoardVerb& verb, const Board& board, Hand hand) {
    auto ops = std::visit(Meaning{board, hand}, verb.value);
    if (ops) *ops = Edits::withoutIdle(std::move(*ops), board);
    return ops;
}

} // namespace lumaro
