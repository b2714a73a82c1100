// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/EditorTesting.h"

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;

constexpr EditorFault changedSince = UndoFault::changedSince;

class UndoHistoryTest : public EditorTest {
protected:
    const Board& board() { return fake_.board(); }
    Hand partner() { return person_.partnerHand(); }
    void partnerDraws(const UUID& on) {
        const DoodlePayload doodle{.width = 30, .height = 30, .strokes = {}, .on = on};
        person_.partner(Edits::putUp(board(), numberedId(77), doodle, Point{500, 480}, partner()));
    }
};

using Act = std::pair<const char*, std::function<bool(EditorModel&)>>;

const Act everyAct[]{
    {"move", [](EditorModel& e) { return e.carryOut({BoardVerb::Move{noteId, {300, 400}}}).has_value(); }},
    {"turn",
     [](EditorModel& e) { return e.inHand().beginGesture(noteId) && e.inHand().turnTo(8) && e.inHand().endGesture(); }},
    {"resize",
     [](EditorModel& e) {
         return e.inHand().beginGesture(chipId) && e.inHand().resizeTo(2) && e.inHand().endGesture();
     }},
    {"text",
     [](EditorModel& e) {
         return e.inHand().beginEditing(noteId) && e.inHand().changeText(pm::doc({})) && e.inHand().endEditing();
     }},
    {"unkeep", [](EditorModel& e) { return e.carryOut({BoardVerb::Unkeep{noteId}}).has_value(); }},
    {"card", [](EditorModel& e) { return e.replacePayload(chipId, CountdownPayload{noon, "soon"}).has_value(); }},
    {"background",
     [](EditorModel& e) { return e.carryOut({BoardVerb::SetBackground{BackgroundID::lilac}}).has_value(); }},
    {"put up", [](EditorModel& e) { return e.pasteText("milk").has_value(); }},
    {"duplicate", [](EditorModel& e) { return e.duplicate(noteId).has_value(); }},
    {"draw on",
     [](EditorModel& e) {
         return e.pen().edit(drawnId) && e.pen().down({300, 400}, {"red", 3}) && (e.pen().up(), e.pen().finish());
     }},
    {"take down", [](EditorModel& e) { return e.carryOut({BoardVerb::TakeDown{noteId}}).has_value(); }},
};

TEST_F(UndoHistoryTest, ActsAreTakenBackOneAfterTheOtherAndDoneAgain) {
    std::vector<Board> looks{look(board())};
    for (const auto& [name, act] : everyAct) {
        ASSERT_TRUE(act(editor_)) << name;
        looks.push_back(look(board()));
        EXPECT_NE(looks.back(), looks.end()[-2]) << name;
    }
    const std::size_t acts = std::size(everyAct);
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = acts; i-- > 0;) {
            EXPECT_TRUE(editor_.undo()) << everyAct[i].first;
            EXPECT_EQ(look(board()), looks[i]) << everyAct[i].first;
        }
        EXPECT_EQ(editor_.undo().error(), EditorFault{UndoFault::nothingToUndo});
        person_.welcome();
        for (std::size_t i = 1; i <= acts; ++i) {
            EXPECT_TRUE(editor_.redo()) << everyAct[i - 1].first;
            EXPECT_EQ(look(board()), looks[i]) << everyAct[i - 1].first;
        }
    }
}

TEST_F(UndoHistoryTest, WhatThePartnerChangedSinceStaysAndTheActIsForgotten) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {100, 100}}}));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{noteId, {300, 300}}}));
    person_.partner(Edits::move(board(), drawnId, {900, 900}, partner()));
    const Board before = board();
    EXPECT_EQ(editor_.undo().error(), changedSince);
    EXPECT_EQ(person_.notice(), "it has changed since — it stays as it is");
    EXPECT_EQ(board(), before);
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.item(chipId).center, (Point{500, 500}));
    EXPECT_EQ(person_.item(noteId).center, (Point{300, 300}));
}

TEST_F(UndoHistoryTest, ItDoesNotReachBehindThePartnersVersionBetweenTwoActs) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {100, 100}}}));
    person_.partner(Edits::move(board(), chipId, {200, 200}, partner()));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {300, 300}}}));
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.item(chipId).center, (Point{200, 200}));
    EXPECT_EQ(editor_.undo().error(), changedSince);
    EXPECT_EQ(person_.item(chipId).center, (Point{200, 200}));
}

TEST_F(UndoHistoryTest, AnActIsDoneAgainOnlyOnWhatTakingItBackLeft) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {100, 100}}}));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::SetBackground{BackgroundID::sky}}));
    EXPECT_TRUE(editor_.undo());
    EXPECT_TRUE(editor_.undo());
    person_.partner(Edits::move(board(), chipId, {200, 200}, partner()));
    EXPECT_EQ(editor_.redo().error(), changedSince);
    person_.partner(Edits::setBackground(BackgroundID::oat));
    EXPECT_EQ(editor_.redo().error(), changedSince);
    EXPECT_EQ(board().background, BackgroundID::oat);
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {100, 100}}}));
    EXPECT_TRUE(editor_.undo());
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{noteId, {100, 100}}}));
    EXPECT_FALSE(editor_.canRedo());
}

TEST_F(UndoHistoryTest, WhatWasDrawnOnAnItemSinceIsNeitherTakenDownNorLeftBehind) {
    const auto isTakenBackWithInkOn = [this](const UUID& id) {
        partnerDraws(id);
        const bool isDone = editor_.undo().has_value();
        EXPECT_EQ(person_.item(numberedId(77)).author, PartnerID::b);
        person_.partner(Edits::takeDown(board(), numberedId(77), partner()));
        return isDone;
    };
    EXPECT_FALSE(isTakenBackWithInkOn(editor_.putUp(samples::plainNote("x")).value()));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{noteId, {1, 1}}}));
    EXPECT_FALSE(isTakenBackWithInkOn(noteId));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Unkeep{noteId}}));
    EXPECT_TRUE(isTakenBackWithInkOn(noteId));
}

TEST_F(UndoHistoryTest, ADoodleDoesNotComeBackOnAnItemThatIsGoneNorANoteWhoseTimeIsOver) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{drawnId}}));
    person_.partner(Edits::takeDown(board(), noteId, partner()));
    EXPECT_EQ(editor_.undo().error(), changedSince);
    const auto id = editor_.pasteText("for a day").value();
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{id}}));
    person_.advance(25h);
    EXPECT_EQ(editor_.undo().error(), EditorFault{UndoFault::expired});
}

TEST_F(UndoHistoryTest, WhatWasTakenDownOutlivesItsTombstoneInTheRoom) {
    person_.partner(Edits::move(board(), noteId, {1, 1}, {PartnerID::b, noon + 5h}));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{noteId}}));
    const Board room = board();
    person_.welcome();
    EXPECT_TRUE(editor_.undo());
    EXPECT_TRUE(BoardLogic::apply(fake_.sent.back().ops, room, noon).rejected.empty());
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{chipId}}));
    person_.partner(std::vector{Op{Delete{.itemId = chipId, .deletedAt = noon + 9h}}});
    EXPECT_TRUE(editor_.undo());
}

TEST_F(UndoHistoryTest, AnActWaitsForAPlaceOnAFullWindow) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{chipId}}));
    for (std::uint64_t i = 100; board().items.size() < BoardSpec::maxLiveItems; ++i) {
        person_.partner(Edits::putUp(board(), numberedId(i), samples::plainNote("x"), Point{}, partner()));
    }
    EXPECT_EQ(editor_.undo().error(), EditorFault{ActFault::windowFull});
    person_.partner(Edits::takeDown(board(), numberedId(100), partner()));
    EXPECT_TRUE(editor_.undo());
    EXPECT_NE(board().find(chipId), nullptr);
}

TEST_F(UndoHistoryTest, AHundredActsAreRemembered) {
    for (int i = 1; i <= 120; ++i) EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {i * 1.0, 0}}}));
    int taken = 0;
    while (editor_.undo()) ++taken;
    EXPECT_EQ(taken, 100);
    EXPECT_EQ(person_.item(chipId).center, (Point{20, 0}));
}

TEST_F(UndoHistoryTest, APartnersEditBetweenTwoTextsPartsThem) {
    EXPECT_TRUE(hand_.beginEditing(noteId));
    EXPECT_TRUE(hand_.changeText(pm::docOfLines("one")));
    person_.advance(600ms);
    person_.partner(Edits::move(board(), noteId, {1, 1}, partner()));
    EXPECT_TRUE(hand_.changeText(pm::docOfLines("two")));
    EXPECT_TRUE(hand_.endEditing());
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.text(noteId), "one");
    EXPECT_EQ(person_.item(noteId).center, (Point{1, 1}));
    EXPECT_EQ(editor_.undo().error(), changedSince);
}

} // namespace
} // namespace lumaro
