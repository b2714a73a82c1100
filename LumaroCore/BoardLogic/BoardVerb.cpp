// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/BoardVerb.h"

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Support/Overloaded.h"

#include <utility>

namespace lumaro {
namespace {

Edits::Result putUpOnce(const BoardVerb::PutUp& put, const Board& board, Hand hand) {
    if (board.find(put.id) != nullptr || board.tombstones.contains(put.id)) return std::vector<Op>{};
    return Edits::putUp(board, put.id, Edits::withFreshLifespan(put.payload, hand.now), put.at, hand);
}

} // namespace

Edits::Result opsOf(const BoardVerb& verb, const Board& board, Hand hand) {
    auto ops =
        std::visit(Overloaded{[&](const BoardVerb::PutUp& put) { return putUpOnce(put, board, hand); },
                              [&](const BoardVerb::Move& move) {
                                  return Edits::place(board, move.item, {.center = move.to}, hand);
                              },
                              [&](const BoardVerb::Turn& turn) {
                                  return Edits::place(board, turn.item, {.rotationDegrees = turn.degrees}, hand);
                              },
                              [&](const BoardVerb::Resize& resize) {
                                  return Edits::place(board, resize.item, {.scale = resize.scale}, hand);
                              },
                              [&](const BoardVerb::TakeDown& gone) { return Edits::takeDown(board, gone.item, hand); },
                              [&](const BoardVerb::Keep& kept) { return Edits::keep(board, kept.item, hand); },
                              [&](const BoardVerb::Unkeep& unkept) { return Edits::unkeep(board, unkept.item, hand); },
                              [](const BoardVerb::SetBackground& wanted) {
                                  return Edits::Result{Edits::setBackground(wanted.background)};
                              }},
                   verb.value);
    if (ops) *ops = Edits::withoutIdle(std::move(*ops), board);
    return ops;
}

} // namespace lumaro
