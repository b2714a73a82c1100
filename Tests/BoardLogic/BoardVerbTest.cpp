// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/BoardVerb.h"

#include "Tests/BoardLogic/SmallBoard.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;

constexpr Hand hand{.author = PartnerID::a, .now = noon + 300us};
const UUID nobody = numberedId(9);

TEST(BoardVerb, WhatIsSoAlreadyIsNoEdit) {
    Board board = smallBoard();
    board.tombstones[nobody] = noon - 24h;
    const Point here = board.items[2].center;
    const BoardVerb verbs[]{{BoardVerb::Move{chipId, here}},
                            {BoardVerb::Turn{chipId, 0.9}},
                            {BoardVerb::Resize{chipId, 1.03}},
                            {BoardVerb::Keep{noteId}},
                            {BoardVerb::ToFront{chipId}},
                            {BoardVerb::ToBack{noteId}},
                            {BoardVerb::Unlock{noteId}},
                            {BoardVerb::SetBackground{board.background}},
                            {BoardVerb::PutUp{noteId, NotePayload{}, {}}},
                            {BoardVerb::PutUp{nobody, NotePayload{}, {}}}};
    for (const auto& verb : verbs) EXPECT_EQ(opsOf(verb, board, hand), std::vector<Op>{}) << verb.value.index();
}

TEST(BoardVerb, WhatCannotBeDoneIsATypedFault) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    const std::pair<BoardVerb, EditFault> cases[]{
        {{BoardVerb::PutUp{nobody, NotePayload{}, Point{nan, 0}}}, EditFault::notFinite},
        {{BoardVerb::Move{nobody, {}}}, EditFault::noSuchItem},
        {{BoardVerb::Move{noteId, {0, nan}}}, EditFault::notFinite},
        {{BoardVerb::Turn{noteId, nan}}, EditFault::notFinite},
        {{BoardVerb::Resize{noteId, nan}}, EditFault::notFinite},
        {{BoardVerb::Resize{drawnId, 2}}, EditFault::cannotResize},
        {{BoardVerb::TakeDown{nobody}}, EditFault::noSuchItem},
        {{BoardVerb::ToBack{nobody}}, EditFault::noSuchItem},
        {{BoardVerb::Lock{nobody}}, EditFault::noSuchItem},
        {{BoardVerb::Keep{chipId}}, EditFault::wrongKind},
        {{BoardVerb::Unkeep{chipId}}, EditFault::wrongKind}};
    for (const auto& [verb, fault] : cases) EXPECT_EQ(opsOf(verb, smallBoard(), hand).error(), fault);
}

} // namespace
} // namespace lumaro
