// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/EditorTesting.h"

#include "LumaroCore/BoardLogic/Placing.h"

#include <limits>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;

class EditorModelTest : public EditorTest {
protected:
    void type(std::string_view text) { EXPECT_TRUE(editor_.changeText(pm::docOfLines(text))); }
    const BoardItem& inHand() { return (shown_ = editor_.draft()->items()).front(); }
    void draw(Point from, Point to) {
        EXPECT_TRUE(editor_.penDown(from, {"red", 4}));
        editor_.penTo(to);
        editor_.penUp();
    }

private:
    std::vector<BoardItem> shown_;
};

TEST_F(EditorModelTest, AGestureIsOneActThatBringsTheItemAndItsDoodlesToTheFront) {
    EXPECT_TRUE(editor_.beginGesture(noteId));
    EXPECT_TRUE(editor_.moveTo({300, 300}));
    EXPECT_TRUE(editor_.moveTo({400, 450}));
    EXPECT_TRUE(editor_.turnTo(6));
    EXPECT_EQ(inHand().center, (Point{400, 450}));
    EXPECT_EQ(person_.item(noteId).center, (Point{500, 500}));
    const auto shown = editor_.draft()->items();
    EXPECT_TRUE(editor_.endGesture());
    ASSERT_EQ(desk_.sent.size(), 1U);
    EXPECT_EQ(desk_.sent[0].ops.size(), 2U);
    EXPECT_EQ(person_.item(drawnId).center, shown[1].center);
    EXPECT_EQ(person_.item(noteId).rotationDegrees, 6);
    EXPECT_EQ(person_.item(noteId).z, 3);
    EXPECT_EQ(person_.item(drawnId).z, 4);
    EXPECT_EQ(person_.item(noteId).updatedAt, noon);
    EXPECT_FALSE(editor_.draft());
    EXPECT_EQ(editor_.selection(), noteId);
}

TEST_F(EditorModelTest, ATouchAloneRaisesAndWhatChangesNothingIsNotSent) {
    EXPECT_TRUE(editor_.beginGesture(noteId));
    EXPECT_TRUE(editor_.endGesture());
    EXPECT_EQ(desk_.sent.size(), 1U);
    EXPECT_TRUE(editor_.beginGesture(noteId));
    EXPECT_TRUE(editor_.moveTo({500, 500}));
    EXPECT_TRUE(editor_.endGesture());
    EXPECT_TRUE(editor_.setBackground(desk_.board().background));
    EXPECT_TRUE(editor_.keep(noteId));
    EXPECT_TRUE(editor_.beginEditing(noteId));
    EXPECT_TRUE(editor_.endEditing());
    person_.partner(Edits::takeDown(desk_.board(), noteId, person_.partnerHand()));
    EXPECT_TRUE(editor_.beginGesture(chipId));
    EXPECT_TRUE(editor_.endGesture());
    EXPECT_EQ(desk_.sent.size(), 1U);
}

TEST_F(EditorModelTest, TheHandSnaps) {
    EXPECT_TRUE(editor_.beginGesture(chipId));
    const std::pair<double, double> tilts[]{{0.9, 0}, {-0.9, 0}, {1.1, 2}, {-7, -8}, {14.9, 14}, {15.5, 15}, {90, 15}};
    for (const auto& [asked, shown] : tilts) {
        EXPECT_TRUE(editor_.turnTo(asked));
        EXPECT_EQ(inHand().rotationDegrees, shown) << asked;
        EXPECT_FALSE(std::signbit(inHand().rotationDegrees) && shown == 0);
    }
    const std::pair<double, double> scales[]{{1.03, 1}, {0.97, 1}, {1.05, 1.05}, {0.1, 0.5}, {9, 2}};
    for (const auto& [asked, shown] : scales) {
        EXPECT_TRUE(editor_.resizeTo(asked));
        EXPECT_EQ(inHand().scale, shown) << asked;
    }
    EXPECT_TRUE(editor_.moveTo({-50, 2000}));
    EXPECT_EQ(inHand().center, (Point{0, 1000}));
    EXPECT_FALSE(editor_.turnTo(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(editor_.beginGesture(drawnId));
    EXPECT_FALSE(editor_.resizeTo(2));
    EXPECT_EQ(person_.notice(), "this one keeps its size");
}

TEST_F(EditorModelTest, WhatComesInDoesNotEndAGestureAndIsKept) {
    EXPECT_TRUE(editor_.beginGesture(noteId));
    EXPECT_TRUE(editor_.moveTo({300, 300}));
    person_.partner(Edits::changeText(desk_.board(), noteId, pm::docOfLines("yes"), person_.partnerHand()));
    person_.partner(Edits::turn(desk_.board(), noteId, 8, person_.partnerHand()));
    EXPECT_EQ(inHand().center, (Point{300, 300}));
    EXPECT_EQ(inHand().rotationDegrees, 8);
    EXPECT_TRUE(editor_.endGesture());
    EXPECT_EQ(person_.item(noteId).center, (Point{300, 300}));
    EXPECT_EQ(person_.item(noteId).rotationDegrees, 8);
    EXPECT_EQ(person_.text(noteId), "yes");
}

TEST_F(EditorModelTest, WhatIsTakenDownInTheHandIsPutBackAsTheHandShowsIt) {
    // A room that remembers a tombstone later than any clock here takes only a new id.
    for (const bool isRemembered : {true, false}) {
        Person person{PartnerID::a, deskBoard()};
        EXPECT_TRUE(person.editor.beginGesture(noteId));
        EXPECT_TRUE(person.editor.moveTo({300, 300}));
        person.partner(Edits::takeDown(person.desk.board(), noteId, {PartnerID::b, noon + 24h}));
        const Board room = person.desk.board();
        if (!isRemembered) person.welcome();
        EXPECT_TRUE(person.editor.draft()->isGone());
        EXPECT_EQ(person.notice(), "it was taken down while you had it — put it back?");
        EXPECT_TRUE(person.editor.endGesture());
        EXPECT_TRUE(person.desk.sent.empty());
        EXPECT_TRUE(person.editor.putBack());
        EXPECT_FALSE(person.editor.draft());
        const UUID id = *person.editor.selection();
        EXPECT_EQ(id == noteId, isRemembered);
        EXPECT_EQ(person.item(id).center, (Point{300, 300}));
        const auto drawn = person.desk.board().items.back();
        EXPECT_EQ(drawn.payload.as<DoodlePayload>()->on, id);
        EXPECT_EQ(drawn.center, (Point{400, 300}));
        EXPECT_TRUE(BoardLogic::apply(person.desk.sent.back().ops, room, noon).rejected.empty());
    }
}

TEST_F(EditorModelTest, WhatIsPutBackByThePartnerTakesWhatTheHandLeftOnIt) {
    const BoardItem note = person_.item(noteId);
    EXPECT_TRUE(editor_.beginEditing(noteId));
    type("almost");
    person_.partner(Edits::takeDown(desk_.board(), noteId, person_.partnerHand()));
    person_.advance(2s);
    EXPECT_TRUE(editor_.endEditing());
    EXPECT_TRUE(desk_.sent.empty());
    person_.partner(Edits::putUp(desk_.board(), noteId, note.payload, note.center, person_.partnerHand()));
    EXPECT_FALSE(editor_.draft()->isGone());
    person_.advance(600ms);
    EXPECT_EQ(person_.text(noteId), "almost");
    EXPECT_FALSE(editor_.draft());
}

TEST_F(EditorModelTest, TypingGoesOutOnceAPauseAndAtTheEnd) {
    EXPECT_TRUE(editor_.beginEditing(noteId));
    for (const auto* text : {"o", "or", "ora"}) {
        type(text);
        person_.advance(599ms);
    }
    EXPECT_TRUE(desk_.sent.empty());
    person_.advance(1ms);
    EXPECT_EQ(desk_.sent.size(), 1U);
    EXPECT_EQ(person_.text(noteId), "ora");
    EXPECT_EQ(person_.sleeper.waiting(), 0U);
    type("oranges");
    EXPECT_TRUE(editor_.endEditing());
    EXPECT_EQ(person_.text(noteId), "oranges");
    EXPECT_EQ(desk_.sent.size(), 2U);
    EXPECT_EQ(person_.sleeper.waiting(), 0U);
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.text(noteId), "hi");
    EXPECT_FALSE(editor_.canUndo());
}

TEST_F(EditorModelTest, ATextDoesNotChangeUnderTheHandNorOverwriteWhatCameAfterIt) {
    EXPECT_TRUE(editor_.beginEditing(noteId));
    EXPECT_TRUE(editor_.beginGesture(noteId));
    EXPECT_TRUE(editor_.moveTo({50, 50}));
    EXPECT_TRUE(editor_.endGesture());
    type("mine");
    person_.partner(Edits::move(desk_.board(), noteId, {200, 200}, person_.partnerHand()));
    person_.advance(600ms);
    EXPECT_EQ(person_.item(noteId).center, (Point{200, 200}));
    person_.partner(Edits::changeText(desk_.board(), noteId, pm::docOfLines("theirs"), person_.partnerHand()));
    EXPECT_EQ(inHand().payload.as<NotePayload>()->pm.plainText(), "mine");
    EXPECT_TRUE(editor_.endEditing());
    EXPECT_EQ(person_.text(noteId), "theirs");
}

TEST_F(EditorModelTest, ARefusedTextStaysInTheHand) {
    EXPECT_TRUE(editor_.beginEditing(noteId));
    type(std::string(40000, 'x'));
    EXPECT_EQ(editor_.endEditing().error(), EditorFault{ActFault::tooLarge});
    EXPECT_FALSE(editor_.beginGesture(chipId));
    EXPECT_EQ(editor_.draft()->id(), noteId);
    type("short");
    EXPECT_TRUE(editor_.beginGesture(chipId));
    EXPECT_EQ(person_.text(noteId), "short");
    EXPECT_EQ(editor_.draft()->id(), chipId);
}

TEST_F(EditorModelTest, PuttingUpFindsAnOpenSpotAndStartsTheLifespan) {
    const Point spot = BoardLogic::openSpot(BoardSpec::noteSize, desk_.board());
    const auto pasted = editor_.pasteText("milk\neggs");
    EXPECT_EQ(person_.item(pasted.value()).center, spot);
    EXPECT_EQ(person_.item(*pasted).expiresAt(), noon + 24h);
    EXPECT_EQ(editor_.selection(), *pasted);
    const auto kept = editor_.putUp(samples::plainNote("stays"), Point{10, 20});
    EXPECT_EQ(person_.item(kept.value()).expiresAt(), std::nullopt);
    EXPECT_EQ(person_.item(*kept).center, (Point{10, 20}));
    EXPECT_EQ(editor_.pasteText(" \n").error(), EditorFault{ActFault::invalid});
}

TEST_F(EditorModelTest, ADuplicateHangsAsideWithItsOwnDoodles) {
    const auto first = editor_.duplicate(noteId).value();
    EXPECT_EQ(person_.item(first).center, (Point{532, 532}));
    EXPECT_EQ(person_.item(first).rotationDegrees, 0);
    const auto second = editor_.duplicate(noteId).value();
    EXPECT_EQ(person_.item(second).center, (Point{564, 564}));
    const auto& drawn = desk_.board().items.back();
    EXPECT_EQ(drawn.payload.as<DoodlePayload>()->on, second);
    EXPECT_EQ(drawn.center, (Point{664, 564}));
    EXPECT_TRUE(editor_.move(chipId, {1600, 1000}));
    EXPECT_EQ(person_.item(editor_.duplicate(chipId).value()).center, (Point{1568, 968}));
}

TEST_F(EditorModelTest, ADoodleSessionIsOneAct) {
    editor_.beginDoodle(noteId);
    draw({480, 480}, {520, 480});
    draw({480, 520}, {520, 520});
    editor_.eraseAlong({500, 470}, {500, 490}, 5);
    EXPECT_EQ(editor_.doodle()->strokes().size(), 3U);
    EXPECT_TRUE(desk_.sent.empty());
    EXPECT_TRUE(editor_.finishDoodle());
    EXPECT_FALSE(editor_.doodle());
    const UUID id = desk_.board().items.back().id;
    EXPECT_EQ(person_.item(id).payload.as<DoodlePayload>()->on, noteId);
    EXPECT_EQ(person_.item(id).center, (Point{500, 500}));
    EXPECT_EQ(person_.item(id).rotationDegrees, 0);
    EXPECT_TRUE(editor_.editDoodle(id));
    EXPECT_TRUE(editor_.finishDoodle());
    EXPECT_EQ(desk_.sent.size(), 1U);
    EXPECT_TRUE(editor_.editDoodle(id));
    editor_.eraseAlong({400, 500}, {600, 500}, 100);
    EXPECT_TRUE(editor_.finishDoodle());
    EXPECT_EQ(desk_.board().find(id), nullptr);
}

TEST_F(EditorModelTest, InkWhoseDoodleOrSurfaceIsGoneGoesUpOnTheGlass) {
    EXPECT_TRUE(editor_.editDoodle(drawnId));
    draw({610, 500}, {640, 500});
    person_.partner(Edits::takeDown(desk_.board(), noteId, person_.partnerHand()));
    EXPECT_TRUE(editor_.finishDoodle());
    const auto& drawn = desk_.board().items.back();
    EXPECT_EQ(drawn.payload.as<DoodlePayload>()->strokes.size(), 2U);
    EXPECT_EQ(drawn.payload.as<DoodlePayload>()->on, std::nullopt);
}

TEST_F(EditorModelTest, ADoodleOverItsCapsIsRefusedAndKept) {
    editor_.beginDoodle(std::nullopt);
    for (int i = 0; i < 400; ++i) draw({i * 3.0, 10}, {i * 3.0, 20});
    EXPECT_EQ(editor_.penDown({0, 0}, {"red", 4}).error(), EditorFault{DoodleFault::tooManyStrokes});
    editor_.eraseAlong({0, 15}, {1200, 15}, 1);
    EXPECT_EQ(editor_.finishDoodle().error(), EditorFault{DoodleFault::tooManyStrokes});
    EXPECT_EQ(person_.notice(), "one doodle holds no more strokes — rub some out, or start another");
    editor_.eraseAlong({0, 20}, {1200, 20}, 8);
    EXPECT_TRUE(editor_.finishDoodle());
}

TEST_F(EditorModelTest, TakingDownWhatIsBeingTypedOnIsTakenBackWithTheText) {
    EXPECT_TRUE(editor_.beginEditing(noteId));
    type("half a thou");
    EXPECT_TRUE(editor_.takeDown(noteId));
    EXPECT_FALSE(editor_.draft());
    EXPECT_FALSE(editor_.selection());
    EXPECT_TRUE(person_.notices.empty());
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(person_.text(noteId), "half a thou");
    EXPECT_EQ(person_.item(drawnId).center, (Point{600, 500}));
}

TEST_F(EditorModelTest, UndoWhileTypingTakesTheTextBackInTheHandToo) {
    EXPECT_TRUE(editor_.beginEditing(noteId));
    type("no");
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(inHand().payload.as<NotePayload>()->pm.plainText(), "hi");
    EXPECT_TRUE(editor_.redo());
    EXPECT_EQ(person_.text(noteId), "no");
    person_.advance(1s);
    EXPECT_TRUE(editor_.endEditing());
    EXPECT_EQ(person_.text(noteId), "no");
}

TEST_F(EditorModelTest, NothingFollowsToAnotherBoardAndWithdrawnActsAreNotTakenBack) {
    EXPECT_TRUE(editor_.move(chipId, {1, 1}));
    editor_.withdraw(desk_.sent.back().batchId);
    EXPECT_FALSE(editor_.canUndo());
    EXPECT_TRUE(editor_.beginEditing(noteId));
    type("not for others");
    EXPECT_TRUE(editor_.canUndo());
    EXPECT_TRUE(editor_.setBackground(BackgroundID::sky));
    editor_.beginDoodle(std::nullopt);
    editor_.discardDraft();
    EXPECT_FALSE(editor_.draft() || editor_.doodle() || editor_.selection() || editor_.canUndo());
    person_.advance(1s);
    EXPECT_EQ(desk_.sent.size(), 2U);
}

} // namespace
} // namespace lumaro
