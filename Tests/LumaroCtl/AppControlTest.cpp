// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/App/AppControl.h"

#include "Samples/Samples.h"
#include "Tests/LumaroCtl/AskedApplication.h"
#include "Tests/Platform/Qt/QtTest.h"

namespace lumaro {
namespace {

using samples::numberedId;
using Verb = AskedApplication::Verb;

class AppControlTest : public QtTest {
protected:
    BoardAnswer answerTo(Verb verb) {
        const auto& answer = app_.ask(std::move(verb));
        waitUntil([&] { return answer.has_value(); });
        return answer.value_or(BoardAnswer{});
    }
    /// Asked, and heard by the application.
    const std::optional<BoardAnswer>& ask(Verb verb) {
        const auto& answer = app_.ask(std::move(verb));
        settle();
        return answer;
    }
    static BoardRequest::PutUp note(std::uint64_t id) { return {numberedId(id), {samples::plainNote("hi")}, {}}; }
    static BoardAnswer idOf(std::uint64_t id) { return {0, numberedId(id).lowerString() + "\n", ""}; }

    AskedApplication app_;
};

const std::string notStored = "that couldn't be kept on this computer — is the disk full?\n";

TEST_F(AppControlTest, WhatIsAskedTwiceIsPutUpOnceAndAnsweredTheSame) {
    app_.goOnBoard();
    app_.rooms.holds = true;
    const auto& first = ask(note(1));
    const auto& again = ask(note(1));
    EXPECT_FALSE(first || again) << "it is not on disk";
    ASSERT_EQ(app_.rooms.sent.size(), 1U);
    app_.rooms.listener->stored(app_.rooms.sent[0].batchId, SendOutcome::Way::queued, 1);
    waitUntil([&] { return first && again; });
    EXPECT_EQ(first, idOf(1));
    EXPECT_EQ(again, first);
    app_.rooms.holds = false;
    EXPECT_EQ(answerTo(BoardRequest::TakeDown{numberedId(1).lowerString()}).status, 0);
    EXPECT_EQ(answerTo(note(1)), idOf(1));
    EXPECT_EQ(app_.rooms.sent.size(), 2U) << "what was taken down since stays down";
}

TEST_F(AppControlTest, AnEditIsAnsweredByItsOwnFateAlone) {
    app_.goOnBoard();
    app_.rooms.holds = true;
    const auto& lost = ask(note(1));
    const auto& kept = ask(note(2));
    ASSERT_EQ(app_.rooms.sent.size(), 2U);
    app_.rooms.listener->notStored(app_.rooms.sent[0].batchId, FileError{FileFault::noSpace, "", ""});
    waitUntil([&] { return lost.has_value(); });
    EXPECT_EQ(lost, (BoardAnswer{74, "", notStored}));
    settle();
    EXPECT_FALSE(kept);
    app_.rooms.listener->stored(app_.rooms.sent[1].batchId, SendOutcome::Way::queued, 1);
    waitUntil([&] { return kept.has_value(); });
    EXPECT_EQ(kept, idOf(2));
    app_.rooms.holds = false;
    EXPECT_EQ(answerTo(note(1)), idOf(1)) << "what was lost may be asked for again";
}

TEST_F(AppControlTest, WhatWasAskedBeforeARestartIsNotDoneAgain) {
    app_.keyring.items[{std::string{keychainService}, "joinToken"}] = AppFixture::token;
    app_.start();
    const auto& again = ask(note(1));
    EXPECT_FALSE(again) << "the outbox may hold it";
    const auto ops = Edits::putUp({}, numberedId(1), samples::plainNote("hi"), {}, {PartnerID::a, app_.clock.now()});
    app_.rooms.listener->opened({{numberedId(9), ops.value()}});
    waitUntil([&] { return again.has_value(); });
    EXPECT_EQ(again, idOf(1));
    EXPECT_TRUE(app_.rooms.sent.empty());
}

TEST_F(AppControlTest, EditsNeedABoardAndAnOutbox) {
    app_.start();
    EXPECT_EQ(answerTo(note(1)).status, 77);
    app_.keyring.items[{std::string{keychainService}, "joinToken"}] = AppFixture::token;
    app_.rooms.stores = false;
    app_.app->retryKeychain();
    app_.pass(Seconds{0});
    const auto& put = ask(note(1));
    app_.rooms.listener->couldNotOpen("no");
    waitUntil([&] { return put.has_value(); });
    EXPECT_EQ(put, (BoardAnswer{74, "", notStored}));
}

TEST_F(AppControlTest, WhatCannotBeAJoinIsNotAskedOfTheService) {
    app_.start();
    const auto before = app_.http.requests.size();
    EXPECT_EQ(answerTo(BoardRequest::Join{"12345", "Bo", {}}), (BoardAnswer{64, "", "a code is six digits.\n"}));
    EXPECT_EQ(app_.state().myDisplayName, "");
    app_.keyring.items[{std::string{keychainService}, "joinToken"}] = AppFixture::token;
    app_.app->retryKeychain();
    app_.pass(Seconds{0});
    EXPECT_EQ(answerTo(BoardRequest::Join{"123456", "Bo", {}}).status, 77);
    EXPECT_EQ(app_.http.requests.size(), before);
}

TEST_F(AppControlTest, WhoeverSaysSoLeavesABoardForALinkWithoutBeingAskedAgain) {
    app_.goOnBoard();
    const auto& joined = ask(BoardRequest::Join{"https://other.example/for/abcdefghijklmnop", "Ann", {}, true});
    EXPECT_NE(app_.http.requests.back().url.find("other.example/joins/link"), std::string::npos);
    ASSERT_TRUE(app_.http.answer(HttpResponse{404, R"({"code":"invite_not_found","message":""})"}));
    waitUntil([&] { return joined.has_value(); });
    EXPECT_EQ(joined->status, 77);
    EXPECT_TRUE(app_.state().token) << "the board that they were on is theirs still";
    EXPECT_EQ(app_.state().myDisplayName, "") << "and so is their name";
}

TEST_F(AppControlTest, ACodeIsANewOneOrWhyThereIsNone) {
    app_.goOnBoard();
    const auto& code = ask(BoardRequest::Code{});
    ASSERT_TRUE(app_.http.answer(HttpResponse{201, R"({"code":"123456","expiresAt":1790000600000,"slot":"b"})"}));
    waitUntil([&] { return code.has_value(); });
    EXPECT_EQ(code, (BoardAnswer{0, "123456\n", ""}));
    const auto& link = ask(BoardRequest::Link{});
    ASSERT_TRUE(app_.http.answer(
        HttpResponse{201, R"({"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12","expiresAt":1790000600000})"}));
    waitUntil([&] { return link.has_value(); });
    EXPECT_EQ(link, (BoardAnswer{0, "https://x/for/abcdefgh12\n", ""}));
    const auto& none = ask(BoardRequest::Code{});
    app_.rooms.stores = false;
    EXPECT_EQ(answerTo(note(1)).status, 74);
    EXPECT_FALSE(none) << "another notice is nothing to it";
    ASSERT_TRUE(app_.http.answer(std::unexpected(HttpFailure{"no route"})));
    waitUntil([&] { return none.has_value(); });
    EXPECT_EQ(none, (BoardAnswer{69, "", "couldn't reach the board. it'll work once you're online.\n"}));
}

TEST_F(AppControlTest, ALinkOfABoardThatWasLeftMeanwhileIsRefused) {
    app_.goOnBoard();
    const auto& link = ask(BoardRequest::Link{});
    app_.app->pair("lm1.other234.a.nbswy3dpo5xxe3de", [](auto) {});
    app_.background.runAll();
    waitUntil([&] { return link.has_value(); });
    EXPECT_EQ(link->status, 77);
}

TEST_F(AppControlTest, WhereSomebodyIsIsSetAndShownFromATerminal) {
    app_.goOnBoard();
    EXPECT_EQ(answerTo(BoardRequest::Place{}).out, "you: not shared\nBen: no word from there yet\n");
    BoardRequest::Place asked;
    asked.town = "lisb";
    asked.share = true;
    const auto shared = answerTo(asked).out;
    EXPECT_TRUE(shared.starts_with("you: lisbon, 38.7")) << shared;
    asked.json = true;
    asked.town = "paris";
    asked.country = "US";
    asked.name = "Our Paris";
    const auto chosen = answerTo(asked).out;
    EXPECT_NE(chosen.find(R"("country":"US")"), std::string::npos) << chosen;
    EXPECT_NE(chosen.find(R"("label":"Our Paris")"), std::string::npos) << chosen;
    asked = {};
    asked.town = "xyzzyx";
    EXPECT_EQ(answerTo(asked).status, 65);
    EXPECT_EQ(app_.state().chosenPlace->country, "US") << "nothing was changed";
    asked.town = "";
    EXPECT_TRUE(answerTo(asked).out.starts_with("you: waiting for a fix\n"));
    asked = {};
    asked.name = "x";
    EXPECT_EQ(answerTo(asked).status, 77);
    app_.positions.answer({LocationAccess::denied, std::nullopt});
    EXPECT_TRUE(answerTo(BoardRequest::Place{}).out.starts_with("you: location is off for this app\n"));
}

TEST_F(AppControlTest, HoursAreSharedFromATerminalAndAnEmptyNameIsRefused) {
    app_.goOnBoard();
    BoardRequest::Place asked;
    asked.hours = true;
    EXPECT_EQ(answerTo(asked).out, "you: not shared; hours of Europe/Berlin\nBen: no word from there yet\n");
    asked.hours = false;
    EXPECT_EQ(answerTo(asked).out, "you: not shared\nBen: no word from there yet\n");
    EXPECT_EQ(answerTo(BoardRequest::Start{" "}), (BoardAnswer{64, "", "a name cannot be empty\n"}));
}

} // namespace
} // namespace lumaro
