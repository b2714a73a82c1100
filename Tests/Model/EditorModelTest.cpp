// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Expiry.h"
#include "Tests/Model/EditorTesting.h"

#include "LumaroCore/BoardLogic/Placing.h"

#include <limits>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;

class EditorModelTest : public EditorTest {
protected:
    void type(std::string_view text) { EXPECT_TRUE(hand_.changeText(pm::docOfLines(text))); }
    const BoardItem& inHand() { return (shown_ = hand_.draft()->items()).front(); }
    void draw(Point from, Point to) {
        EXPECT_TRUE(pen_.down(from, {"red", 4}));
        pen_.moveTo(to);
        pen_.up();
    }

private:
    std::vector<BoardItem> shown_;
};

TEST_F(EditorModelTest, AGestureIsOneActThatBringsTheItemAndItsDoodlesToTheFront) {
    EXPECT_TRUE(hand_.beginGesture(noteId));
    EXPECT_TRUE(hand_.moveTo({300, 300}));
    EXPECT_TRUE(hand_.moveTo({400, 450}));
    EXPECT_TRUE(hand_.turnTo(6));
    EXPECT_EQ(inHand().center, (Point{400, 450}));
    EXPECT_EQ(person_.item(noteId).center, (Point{500, 500}));
    const auto shown = hand_.draft()->items();
    EXPECT_TRUE(hand_.endGesture());
    ASSERT_EQ(fake_.sent.size(), 1U);
    EXPECT_EQ(fake_.sent[0].ops.size(), 2U);
    EXPECT_EQ(person_.item(drawnId).center, shown[1].center);
    EXPECT_EQ(person_.item(noteId).rotationDegrees, 6);
    EXPECT_EQ(person_.item(noteId).z, 3);
    EXPECT_EQ(person_.item(drawnId).z, 4);
    EXPECT_EQ(person_.item(noteId).updatedAt, noon);
    EXPECT_FALSE(hand_.draft());
    EXPECT_EQ(hand_.selection(), noteId);
}

TEST_F(EditorModelTest, ATouchAloneRaisesAndWhatChangesNothingIsNotSent) {
    EXPECT_TRUE(hand_.beginGesture(noteId));
    EXPECT_TRUE(hand_.endGesture());
    EXPECT_EQ(fake_.sent.size(), 1U);
    EXPECT_TRUE(hand_.beginGesture(noteId));
    EXPECT_TRUE(hand_.moveTo({500, 500}));
    EXPECT_TRUE(hand_.endGesture());
    EXPECT_TRUE(editor_.carryOut({BoardVerb::SetBackground{fake_.board().background}}));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Keep{noteId}}));
    EXPECT_TRUE(hand_.beginEditing(noteId));
    EXPECT_TRUE(hand_.endEditing());
    person_.partner(Edits::takeDown(fake_.board(), noteId, person_.partnerHand()));
    EXPECT_TRUE(hand_.beginGesture(chipId));
    EXPECT_TRUE(hand_.endGesture());
    EXPECT_EQ(fake_.sent.size(), 1U);
}

TEST_F(EditorModelTest, TheHandSnaps) {
    EXPECT_TRUE(hand_.beginGesture(chipId));
    const std::pair<double, double> tilts[]{{0.9, 0}, {-0.9, 0}, {1.1, 2}, {-7, -8}, {14.9, 14}, {15.5, 15}, {90, 15}};
    for (const auto& [asked, shown] : tilts) {
        EXPECT_TRUE(hand_.turnTo(asked));
        EXPECT_EQ(inHand().rotationDegrees, shown) << asked;
        EXPECT_FALSE(std::signbit(inHand().rotationDegrees) && shown == 0);
    }
    const std::pair<double, double> scales[]{{1.03, 1}, {0.97, 1}, {1.05, 1.05}, {0.1, 0.5}, {9, 2}};
    for (const auto& [asked, shown] : scales) {
        EXPECT_TRUE(hand_.resizeTo(asked));
        EXPECT_EQ(inHand().scale, shown) << asked;
    }
    EXPECT_TRUE(hand_.moveTo({-50, 2000}));
    EXPECT_EQ(inHand().center, (Point{0, 1000}));
    EXPECT_FALSE(hand_.turnTo(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(hand_.beginGesture(drawnId));
    EXPECT_FALSE(hand_.resizeTo(2));
    EXPECT_EQ(person_.notice(), "this one keeps its size");
}

TEST_F(EditorModelTest, WhatComesInDoesNotEndAGestureAndIsKept) {
    EXPECT_TRUE(hand_.beginGesture(noteId));
    EXPECT_TRUE(hand_.moveTo({300, 300}));
    person_.partner(Edits::changeText(fake_.board(), noteId, pm::docOfLines("yes"), person_.partnerHand()));
    person_.partner(Edits::turn(fake_.board(), noteId, 8, person_.partnerHand()));
    EXPECT_EQ(inHand().center, (Point{300, 300}));
    EXPECT_EQ(inHand().rotationDegrees, 8);
    EXPECT_TRUE(hand_.endGesture());
    EXPECT_EQ(person_.item(noteId).center, (Point{300, 300}));
    EXPECT_EQ(person_.item(noteId).rotationDegrees, 8);
    EXPECT_EQ(person_.text(noteId), "yes");
}

TEST_F(EditorModelTest, WhatIsTakenDownInTheHandIsPutBackAsTheHandShowsIt) {
    // A room that remembers a tombstone later than any clock here takes only a new id.
    for (const bool isRemembered : {true, false}) {
        Person person{PartnerID::a, smallBoard()};
        EXPECT_TRUE(person.editor.inHand().beginGesture(noteId));
        EXPECT_TRUE(person.editor.inHand().moveTo({300, 300}));
        person.partner(Edits::takeDown(person.fake.board(), noteId, {PartnerID::b, noon + 24h}));
        const Board room = person.fake.board();
        if (!isRemembered) person.welcome();
        EXPECT_TRUE(person.editor.inHand().draft()->isGone());
        EXPECT_EQ(person.notice(), "it was taken down while you had it — put it back?");
        EXPECT_TRUE(person.editor.inHand().endGesture());
        EXPECT_TRUE(person.fake.sent.empty());
        EXPECT_TRUE(person.editor.inHand().putBack());
        EXPECT_FALSE(person.editor.inHand().draft());
        const UUID id = *person.editor.inHand().selection();
        EXPECT_EQ(id == noteId, isRemembered);
        EXPECT_EQ(person.item(id).center, (Point{300, 300}));
        const auto drawn = person.fake.board().items.back();
        EXPECT_EQ(drawn.payload.as<DoodlePayload>()->on, id);
        EXPECT_EQ(drawn.center, (Point{400, 300}));
        EXPECT_TRUE(BoardLogic::apply(person.fake.sent.back().ops, room, noon).rejected.empty());
    }
}

TEST_F(EditorModelTest, WhatIsPutBackByThePartnerTakesWhatTheHandLeftOnIt) {
    const BoardItem note = person_.item(noteId);
    EXPECT_TRUE(hand_.beginEditing(noteId));
    type("almost");
    person_.partner(Edits::takeDown(fake_.board(), noteId, person_.partnerHand()));
    person_.advance(2s);
    EXPECT_TRUE(hand_.endEditing());
    EXPECT_TRUE(fake_.sent.empty());
    person_.partner(Edits::putUp(fake_.board(), noteId, note.payload, note.center, person_.partnerHand()));
    EXPECT_FALSE(hand_.draft()->isGone());
    person_.advance(600ms);
    EXPECT_EQ(person_.text(noteId), "almost");
    EXPECT_FALSE(hand_.draft());
}

TEST_F(EditorModelTest, TypingGoesOutOnceAPauseAndAtTheEnd) {
    EXPECT_TRUE(hand_.beginEditing(noteId));
    for (const auto* text : {"o", "or", "ora"}) {
        type(text);
        person_.advance(599ms);
    }
    EXPECT_TRUE(fake_.sent.empty());
    person_.advance(1ms);
    EXPECT_EQ(fake_.sent.size(), 1U);
    EXPECT_EQ(person_.text(noteId), "ora");
    EXPECT_EQ(person_.sleeper.waiting(), 0U);
    type("oranges");
    EXPECT_TRUE(hand_.endEditing());
    EXPECT_EQ(person_.text(noteId), "oranges");
    EXPECT_EQ(fake_.sent.size(), 2U);
    EXPECT_EQ(person_.sleeper.waiting(), 0U);
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.text(noteId), "hi");
    EXPECT_FALSE(editor_.canUndo());
}

TEST_F(EditorModelTest, ATextDoesNotChangeUnderTheHandNorOverwriteWhatCameAfterIt) {
    EXPECT_TRUE(hand_.beginEditing(noteId));
    EXPECT_TRUE(hand_.beginGesture(noteId));
    EXPECT_TRUE(hand_.moveTo({50, 50}));
    EXPECT_TRUE(hand_.endGesture());
    type("mine");
    person_.partner(Edits::move(fake_.board(), noteId, {200, 200}, person_.partnerHand()));
    person_.advance(600ms);
    EXPECT_EQ(person_.item(noteId).center, (Point{200, 200}));
    person_.partner(Edits::changeText(fake_.board(), noteId, pm::docOfLines("theirs"), person_.partnerHand()));
    EXPECT_EQ(inHand().payload.as<NotePayload>()->pm.plainText(), "mine");
    EXPECT_TRUE(hand_.endEditing());
    EXPECT_EQ(person_.text(noteId), "theirs");
}

TEST_F(EditorModelTest, ARefusedTextStaysInTheHand) {
    EXPECT_TRUE(hand_.beginEditing(noteId));
    type(std::string(40000, 'x'));
    EXPECT_EQ(hand_.endEditing().error(), EditorFault{ActFault::tooLarge});
    EXPECT_FALSE(hand_.beginGesture(chipId));
    EXPECT_EQ(hand_.draft()->id(), noteId);
    type("short");
    EXPECT_TRUE(hand_.beginGesture(chipId));
    EXPECT_EQ(person_.text(noteId), "short");
    EXPECT_EQ(hand_.draft()->id(), chipId);
}

TEST_F(EditorModelTest, PuttingUpFindsAnOpenSpotAndStartsTheLifespan) {
    const Point spot = BoardLogic::openSpot(BoardSpec::noteSize, fake_.board());
    const auto pasted = editor_.pasteText("milk\neggs");
    EXPECT_EQ(person_.item(pasted.value()).center, spot);
    EXPECT_EQ(person_.item(*pasted).expiresAt(), noon + 24h);
    EXPECT_EQ(hand_.selection(), *pasted);
    const auto kept = editor_.putUp(samples::plainNote("stays"), Point{10, 20});
    EXPECT_EQ(person_.item(kept.value()).expiresAt(), std::nullopt);
    EXPECT_EQ(person_.item(*kept).center, (Point{10, 20}));
    EXPECT_EQ(editor_.pasteText(" \n").error(), EditorFault{ActFault::invalid});
}

TEST_F(EditorModelTest, ANoteWhoseDayIsOverIsNotWrittenLateAndCanBePutBack) {
    const auto id = editor_.pasteText("milk").value();
    person_.advance(24h - 300ms);
    EXPECT_TRUE(hand_.beginEditing(id));
    type("milk and eggs");
    person_.advance(600ms);
    EXPECT_EQ(person_.notice(), "that note's day is over");
    EXPECT_EQ(person_.text(id), "milk");
    person_.partner(BoardLogic::expiryOps(fake_.board(), person_.clock.now()));
    EXPECT_TRUE(hand_.putBack());
    EXPECT_EQ(person_.text(id), "milk and eggs");
    EXPECT_EQ(person_.item(id).expiresAt(), person_.clock.now() + 24h);
}

TEST_F(EditorModelTest, ADuplicateHangsAsideWithItsOwnDoodles) {
    const auto first = editor_.duplicate(noteId).value();
    EXPECT_EQ(person_.item(first).center, (Point{532, 532}));
    EXPECT_EQ(person_.item(first).rotationDegrees, 0);
    const auto second = editor_.duplicate(noteId).value();
    EXPECT_EQ(person_.item(second).center, (Point{564, 564}));
    const auto& drawn = fake_.board().items.back();
    EXPECT_EQ(drawn.payload.as<DoodlePayload>()->on, second);
    EXPECT_EQ(drawn.center, (Point{664, 564}));
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {1600, 1000}}}));
    EXPECT_EQ(person_.item(editor_.duplicate(chipId).value()).center, (Point{1568, 968}));
}

TEST_F(EditorModelTest, ADoodleSessionIsOneAct) {
    EXPECT_TRUE(pen_.begin(noteId));
    draw({480, 480}, {520, 480});
    draw({480, 520}, {520, 520});
    pen_.eraseAlong({500, 470}, {500, 490}, 5);
    EXPECT_EQ(pen_.session()->strokes().size(), 3U);
    EXPECT_TRUE(fake_.sent.empty());
    EXPECT_TRUE(pen_.finish());
    EXPECT_FALSE(pen_.session());
    const UUID id = fake_.board().items.back().id;
    EXPECT_EQ(person_.item(id).payload.as<DoodlePayload>()->on, noteId);
    EXPECT_EQ(person_.item(id).center, (Point{500, 500}));
    EXPECT_EQ(person_.item(id).rotationDegrees, 0);
    EXPECT_TRUE(pen_.edit(id));
    EXPECT_TRUE(pen_.finish());
    EXPECT_EQ(fake_.sent.size(), 1U);
    EXPECT_TRUE(pen_.edit(id));
    pen_.eraseAlong({400, 500}, {600, 500}, 100);
    EXPECT_TRUE(pen_.finish());
    EXPECT_EQ(fake_.board().find(id), nullptr);
}

TEST_F(EditorModelTest, WithThePenInTheHandUndoGoesStrokeByStrokeAndNeverToTheBoard) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {1, 1}}}));
    EXPECT_TRUE(pen_.begin(std::nullopt));
    EXPECT_FALSE(editor_.canUndo());
    draw({100, 100}, {200, 100});
    draw({100, 300}, {200, 300});
    const auto drawn = pen_.session()->strokes();
    // One sweep, told in three steps.
    pen_.eraseAlong({120, 90}, {120, 110}, 4);
    pen_.eraseAlong({120, 110}, {160, 110}, 12);
    pen_.eraseAlong({120, 300}, {120, 300}, 4);
    pen_.up();
    const auto swept = pen_.session()->strokes();
    EXPECT_EQ(swept.size(), 4U);
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(pen_.session()->strokes(), drawn);
    EXPECT_TRUE(editor_.redo());
    EXPECT_EQ(pen_.session()->strokes(), swept);
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(editor_.undo());
    EXPECT_TRUE(pen_.session()->strokes().empty());
    EXPECT_EQ(person_.item(chipId).center, (Point{1, 1}));
    EXPECT_TRUE(editor_.redo());
    // What is under the pen is the first to go, and a new line ends what could be drawn again.
    EXPECT_TRUE(pen_.down({5, 5}, {"red", 4}));
    EXPECT_FALSE(editor_.canRedo());
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(pen_.session()->strokes(), std::vector{drawn.front()});
    pen_.cancel();
    EXPECT_TRUE(person_.notices.empty());
    EXPECT_TRUE(editor_.undo());
    EXPECT_NE(person_.item(chipId).center, (Point{1, 1}));
}

TEST_F(EditorModelTest, WhatIsInTheHandIsLaidDownWhenTheWindowCloses) {
    EXPECT_TRUE(pen_.begin(std::nullopt));
    EXPECT_TRUE(pen_.down({100, 100}, {"red", 4}));
    pen_.moveTo({200, 100});
    EXPECT_TRUE(hand_.beginEditing(noteId));
    type("half a thou");
    editor_.layDown();
    EXPECT_FALSE(pen_.session() || hand_.draft());
    EXPECT_EQ(person_.text(noteId), "half a thou");
    EXPECT_EQ(fake_.board().items.back().payload.as<DoodlePayload>()->strokes.size(), 1U);
}

TEST_F(EditorModelTest, InkWhoseDoodleOrSurfaceIsGoneGoesUpOnTheGlass) {
    EXPECT_TRUE(pen_.edit(drawnId));
    draw({610, 500}, {640, 500});
    person_.partner(Edits::takeDown(fake_.board(), noteId, person_.partnerHand()));
    EXPECT_TRUE(pen_.finish());
    const auto& drawn = fake_.board().items.back();
    EXPECT_EQ(drawn.payload.as<DoodlePayload>()->strokes.size(), 2U);
    EXPECT_EQ(drawn.payload.as<DoodlePayload>()->on, std::nullopt);
}

TEST_F(EditorModelTest, ADoodleOverItsCapsIsRefusedAndKept) {
    EXPECT_TRUE(pen_.begin(std::nullopt));
    for (int i = 0; i < 400; ++i) draw({i * 3.0, 10}, {i * 3.0, 20});
    EXPECT_EQ(pen_.down({0, 0}, {"red", 4}).error(), EditorFault{DoodleFault::tooManyStrokes});
    pen_.eraseAlong({0, 15}, {1200, 15}, 1);
    EXPECT_EQ(pen_.finish().error(), EditorFault{DoodleFault::tooManyStrokes});
    EXPECT_EQ(person_.notice(), "one doodle holds no more strokes — rub some out, or start another");
    pen_.eraseAlong({0, 20}, {1200, 20}, 8);
    EXPECT_TRUE(pen_.finish());
}

TEST_F(EditorModelTest, TakingDownWhatIsBeingTypedOnIsTakenBackWithTheText) {
    EXPECT_TRUE(hand_.beginEditing(noteId));
    type("half a thou");
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{noteId}}));
    EXPECT_FALSE(hand_.draft());
    EXPECT_FALSE(hand_.selection());
    EXPECT_TRUE(person_.notices.empty());
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.text(noteId), "half a thou");
    EXPECT_EQ(person_.item(drawnId).center, (Point{600, 500}));
}

TEST_F(EditorModelTest, UndoWhileTypingTakesTheTextBackInTheHandToo) {
    EXPECT_TRUE(hand_.beginEditing(noteId));
    type("no");
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(inHand().payload.as<NotePayload>()->pm.plainText(), "hi");
    EXPECT_TRUE(editor_.redo());
    EXPECT_EQ(person_.text(noteId), "no");
    person_.advance(1s);
    EXPECT_TRUE(hand_.endEditing());
    EXPECT_EQ(person_.text(noteId), "no");
}

TEST_F(EditorModelTest, NothingFollowsToAnotherBoardAndWithdrawnActsAreNotTakenBack) {
    EXPECT_TRUE(editor_.carryOut({BoardVerb::Move{chipId, {1, 1}}}));
    editor_.withdraw(fake_.sent.back().batchId);
    EXPECT_FALSE(editor_.canUndo());
    EXPECT_TRUE(hand_.beginEditing(noteId));
    type("not for others");
    EXPECT_TRUE(editor_.canUndo());
    EXPECT_TRUE(editor_.carryOut({BoardVerb::SetBackground{BackgroundID::sky}}));
    EXPECT_TRUE(pen_.begin(std::nullopt));
    editor_.discardDraft();
    EXPECT_FALSE(hand_.draft() || pen_.session() || hand_.selection() || editor_.canUndo());
    person_.advance(1s);
    EXPECT_EQ(fake_.sent.size(), 2U);
}

} // namespace
} // namespace lumaro
