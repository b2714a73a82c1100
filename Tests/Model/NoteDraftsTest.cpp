// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/NoteDrafts.h"

#include "Tests/Model/AppFixture.h"
#include "Tests/Model/EditorTesting.h"

namespace lumaro {
namespace {

using namespace std::chrono_literals;

class NewNoteTest : public EditorTest {
protected:
    void begin() { ASSERT_TRUE(editor_.beginNote()); }
    void type(std::string_view text) { ASSERT_TRUE(hand_.changeText(pm::docOfLines(text))); }
    const NotePayload& inHand() { return *(shown_ = hand_.draft()->items().front()).payload.as<NotePayload>(); }

private:
    BoardItem shown_;
};

TEST_F(NewNoteTest, GoesUpWhenItIsLetGoOfAndNotBefore) {
    begin();
    const auto id = *hand_.selection();
    type("buy oranges");
    person_.advance(2s);
    EXPECT_TRUE(fake_.sent.empty());
    EXPECT_FALSE(editor_.canUndo());
    EXPECT_TRUE(hand_.changeLook("kraft", "tapeDots"));
    EXPECT_EQ(inHand().pm.plainText(), "buy oranges");
    person_.advance(3h);
    EXPECT_TRUE(hand_.endEditing());
    ASSERT_EQ(fake_.sent.size(), 1U);
    EXPECT_EQ(person_.text(id), "buy oranges");
    const auto& up = *person_.item(id).payload.as<NotePayload>();
    EXPECT_EQ(up.paper, "kraft");
    EXPECT_EQ(up.pin, "tapeDots");
    EXPECT_EQ(up.expiresAt, person_.clock.now() + BoardSpec::noteLifespan);
    EXPECT_EQ(hand_.selection(), id);
    EXPECT_TRUE(editor_.undo());
    EXPECT_EQ(fake_.board().find(id), nullptr);
    EXPECT_TRUE(editor_.redo());
    EXPECT_EQ(person_.text(id), "buy oranges");
}

TEST_F(NewNoteTest, IsGoneWhenNothingIsWrittenOnIt) {
    for (const char* const text : {"", "  \n\t ", "\xE2\x80\x8B\n"}) {
        begin();
        type(text);
        EXPECT_TRUE(hand_.endEditing());
        EXPECT_FALSE(hand_.draft());
        EXPECT_FALSE(hand_.selection());
    }
    begin();
    EXPECT_TRUE(editor_.carryOut({BoardVerb::TakeDown{*hand_.selection()}}));
    EXPECT_FALSE(hand_.draft());
    EXPECT_TRUE(fake_.sent.empty());
    EXPECT_TRUE(person_.notices.empty());
}

TEST_F(NewNoteTest, GoesUpWhenAnotherIsTakenInTheHandAndStaysWhereNobodyTakesIt) {
    begin();
    const auto id = *hand_.selection();
    type("first");
    EXPECT_TRUE(hand_.beginEditing(noteId));
    EXPECT_EQ(person_.text(id), "first");
    EXPECT_TRUE(hand_.endEditing());
    begin();
    type(std::string(BoardSpec::maxItemJSONBytes, 'x'));
    EXPECT_FALSE(hand_.endEditing());
    EXPECT_TRUE(hand_.isEditing());
    type("less");
    EXPECT_TRUE(hand_.endEditing());
    EXPECT_EQ(fake_.sent.size(), 2U);
}

/// A person on a board whose program may end at any moment.
struct NoteDraftsTest : testing::Test {
    NoteDraftsTest() { person.goOnBoard(); }

    EditorModel& editor() { return person.app->editor(); }
    void type(std::string_view text) { ASSERT_TRUE(editor().inHand().changeText(pm::docOfLines(text))); }
    /// The program ends without a word, as when it is killed.
    void startAgain() {
        person.rebuild();
        person.start();
    }
    std::string typed() { return editor().inHand().draft()->items().front().payload.as<NotePayload>()->pm.plainText(); }

    AppFixture person;
};

TEST_F(NoteDraftsTest, ADraftComesBackAfterACrashAndGoesUpOnce) {
    ASSERT_TRUE(editor().beginNote());
    type("half a thou");
    person.pass(ItemInHand::typingPause);
    EXPECT_TRUE(person.rooms.sent.empty());
    startAgain();
    EXPECT_FALSE(editor().inHand().isEditing());
    ASSERT_TRUE(editor().isNoteOffered());
    ASSERT_TRUE(editor().beginNote());
    EXPECT_EQ(typed(), "half a thou");
    type("half a thought");
    person.app->shutdown();
    person.background.runAll();
    ASSERT_EQ(person.rooms.sent.size(), 1U);
    startAgain();
    EXPECT_FALSE(editor().isNoteOffered());
}

TEST_F(NoteDraftsTest, WhatIsNoDraftIsLeftOut) {
    for (const auto& bytes : {std::string{"{"}, std::string{"\xff"}, std::string(NoteDrafts::maxBytes + 1, ' ')}) {
        ASSERT_TRUE(person.files.writeFile("/profile/drafts/q3m7xk2p.json", bytes));
        ASSERT_TRUE(person.files.writeFile("/profile/drafts/quick-note.txt", bytes == "{" ? "\xff" : bytes));
        startAgain();
        EXPECT_FALSE(editor().isNoteOffered());
        EXPECT_EQ(person.app->drafts().quickNote(), "");
    }
}

TEST_F(NoteDraftsTest, LeavingTheBoardForgetsItsDraft) {
    ASSERT_TRUE(editor().beginNote());
    type("never mind");
    person.pass(ItemInHand::typingPause);
    person.app->leaveBoard();
    person.background.runAll();
    EXPECT_FALSE(person.files.readFile("/profile/drafts/q3m7xk2p.json"));
}

TEST_F(NoteDraftsTest, AQuickNoteIsThereWhenItsWindowComesAgain) {
    auto& drafts = person.app->drafts();
    drafts.keepQuickNote("call");
    EXPECT_FALSE(person.files.readFile("/profile/drafts/quick-note.txt"));
    person.pass(NoteDrafts::pause);
    drafts.keepQuickNote("call grandma");
    startAgain();
    EXPECT_EQ(person.app->drafts().quickNote(), "call grandma");
    person.app->drafts().keepQuickNote(std::string(NoteDrafts::maxBytes - 1, 'x') + "é");
    EXPECT_EQ(person.app->drafts().quickNote().size(), NoteDrafts::maxBytes - 1);
    person.app->drafts().keepQuickNote("");
    person.pass(NoteDrafts::pause);
    EXPECT_FALSE(person.files.readFile("/profile/drafts/quick-note.txt"));
}

} // namespace
} // namespace lumaro
