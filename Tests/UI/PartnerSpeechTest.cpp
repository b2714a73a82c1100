// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/PartnerSpeech.h"

#include "LumaroCore/BoardLogic/Edits.h"
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>

namespace lumaro {
namespace {

class PartnerSpeechTest : public testing::Test, protected AppFixture {
protected:
    void SetUp() override {
        goOnBoard();
        app->onNews([this](const AppNews& news) { speech.hear(news); });
        QObject::connect(&speech, &PartnerSpeech::spoke, &speech, [this](const QString& text) { said.append(text); });
    }
    Hand theirs() { return {.author = PartnerID::b, .now = clock.now()}; }
    UUID putUp(const std::string& text) {
        const auto id = ids.next();
        relay(*Edits::putUp(app->board(), id, NotePayload{pm::docOfLines(text), "butter", "brass", {}}, {}, theirs()));
        return id;
    }
    void write(const UUID& id, const std::string& text) {
        relay(*Edits::changeText(app->board(), id, pm::docOfLines(text), theirs()));
    }
    QStringList heard() {
        pass(PartnerSpeech::pause);
        return std::exchange(said, {});
    }

    PartnerSpeech speech{*app, sleeper};
    QStringList said;
};

TEST_F(PartnerSpeechTest, WhatIsDoneInOneGoIsToldOnceItRests) {
    const auto note = putUp("buy");
    for (const char* text : {"buy or", "buy oranges"}) {
        pass(PartnerSpeech::pause / 2);
        write(note, text);
    }
    EXPECT_EQ(said, QStringList{});
    EXPECT_EQ(heard(), QStringList{"Ben put up a note, 'buy oranges'"});
    write(note, "buy lemons");
    relay(*Edits::move(app->board(), note, {100, 100}, theirs()));
    EXPECT_EQ(heard(), QStringList{"Ben changed a note, 'buy lemons'"});
    relay(*Edits::turn(app->board(), note, 6, theirs()));
    EXPECT_EQ(heard(), QStringList{"Ben moved a note, 'buy lemons'"});
    relay(*Edits::raise(app->board(), note, theirs()));
    relay(*Edits::takeDown(app->board(), putUp("oh, no"), theirs()));
    EXPECT_EQ(heard(), QStringList{}) << "neither a place in the stack, nor what is gone again";
}

TEST_F(PartnerSpeechTest, ANoteThatIsWrittenWithoutAPauseIsToldAllTheSame) {
    const auto note = putUp("a");
    std::string text = "a";
    for (int i = 0; i < 16; ++i) {
        pass(PartnerSpeech::longest / 16);
        write(note, text += "a");
    }
    EXPECT_EQ(said.size(), 1);
}

TEST_F(PartnerSpeechTest, SeveralThingsAreOneSentenceAndManyAreANumber) {
    const auto note = putUp("one");
    EXPECT_EQ(heard().size(), 1);
    // The doodle on it goes with it.
    relay(*Edits::putUp(app->board(), ids.next(), DoodlePayload{10, 10, {}, note}, {}, theirs()));
    EXPECT_EQ(heard(), QStringList{"Ben put up a doodle"});
    relay(*Edits::takeDown(app->board(), note, theirs()));
    putUp(std::string(200, 'x'));
    const QString beginning(80, QLatin1Char{'x'});
    EXPECT_EQ(heard(), QStringList("Ben took down a note, 'one'; put up a note, '" + beginning + "…'"));
    for (const char* text : {"1", "2", "3", "4"}) putUp(text);
    EXPECT_EQ(heard(), QStringList{"Ben changed 4 things on the board"});
}

TEST_F(PartnerSpeechTest, OnesOwnDeedsAndThoseOfABoardThatWasLeftAreNotTold) {
    relay(noteOps("from my other computer", PartnerID::a), PartnerID::a);
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    EXPECT_EQ(heard(), QStringList{});
    putUp("bye");
    app->leaveBoard();
    EXPECT_EQ(heard(), QStringList{});
}

} // namespace
} // namespace lumaro
