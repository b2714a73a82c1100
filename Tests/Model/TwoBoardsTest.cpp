// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

#include <string>

namespace lumaro {
namespace {

// Both started a board, and one of them has the other's code.
struct BothStarted : AppFixture {
    BothStarted() {
        start();
        http.answer(HttpResponse{404, R"({"code":"not_found","message":""})"});
        app->pairing().startOurBoard();
        http.answer(HttpResponse{201, R"({"coupleId":"q3m7xk2p","token":")" + std::string{token} +
                                          R"(","invite":{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12",)"
                                          R"("expiresAt":1890000000000}})"});
        background.runAll();
    }
    void open() {
        rooms.listener->opened({});
        ServerMessage::Welcome welcome;
        welcome.roster = welcome.paired = PartnerSet{.a = true, .b = false};
        rooms.say(std::move(welcome));
    }
    void enterCode() { app->pairing().joinByCode("123456", {OwnBoard::askedAbout, {}}); }
    void answerJoin() {
        http.answer(HttpResponse{200, R"({"token":"lm1.other234.b.nbswy3dpo5xxe3de","coupleId":"other234",)"
                                      R"("partnerName":"Cleo","slot":"b","status":"joined"})"});
    }
    int leavings() const {
        return static_cast<int>(std::ranges::count_if(http.requests, [](const HttpRequest& request) {
            return request.method == "DELETE" && request.url.ends_with("/couples/q3m7xk2p/devices/self");
        }));
    }
};

class TwoBoardsTest : public testing::Test, protected BothStarted {};

TEST_F(TwoBoardsTest, ABoardThatWasOnlyStartedSimplyGoesOnceTheOtherIsJoined) {
    enterCode();
    EXPECT_TRUE(http.requests.back().url.ends_with("/joins/code"));
    http.answer(std::unexpected(HttpFailure{"no route"}));
    EXPECT_TRUE(std::holds_alternative<PairingPhase::Failed>(state().pairing.value));
    EXPECT_EQ(state().token->raw, token) << "the started board is still there";
    EXPECT_EQ(state().onboarding, OnboardingStep::bringThemOver);
    EXPECT_TRUE(state().boardLink);
    open();
    enterCode();
    EXPECT_EQ(leavings(), 0) << "not before";
    answerJoin();
    background.runAll();
    EXPECT_EQ(state().token->coupleId, "other234");
    EXPECT_EQ(leavings(), 1);
    EXPECT_FALSE(state().boardLink || state().onboarding);
}

TEST_F(TwoBoardsTest, OneWithSomethingOnItOrSomebodyIsAskedAbout) {
    open();
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    const auto requests = http.requests.size();
    enterCode();
    const auto asking = std::get<PairingPhase::Asking>(state().pairing.value);
    EXPECT_TRUE(asking.isByCode && asking.leavesBoard);
    EXPECT_EQ(asking.items, 1U);
    app->pairing().acceptInvite(false);
    EXPECT_EQ(http.requests.size(), requests);
    enterCode();
    app->pairing().acceptInvite(true);
    http.answer(HttpResponse{404, R"({"code":"code_not_found","message":""})"});
    EXPECT_EQ(app->board().items.size(), 1U);
    app->pairing().forgetFailure();
    ASSERT_TRUE(app->liveBoard().act(
        *Edits::takeDown(app->board(), app->board().items.front().id, {PartnerID::a, clock.now()})));
    rooms.say(ServerMessage::Roster{PartnerSet::both(), SlotNames{"Ann", "Ben"}});
    enterCode();
    EXPECT_TRUE(std::holds_alternative<PairingPhase::Asking>(state().pairing.value));
}

TEST_F(TwoBoardsTest, AProgramThatEndsInBetweenLeavesNoGhostAndLosesNoBoard) {
    // The keyring's work is cut off after so many steps: the leaving, the new key.
    for (const int done : {0, 1, 2}) {
        SCOPED_TRACE(done);
        BothStarted one;
        one.enterCode();
        one.answerJoin();
        for (int step = 0; step < done; ++step) one.background.runNext();
        const auto keys = one.keyring.items;
        one.rebuild();
        one.keyring.items = keys; // what came later never happened
        one.http.requests.clear();
        one.start();
        const bool hasMoved = done == 2;
        EXPECT_EQ(one.state().token->coupleId, hasMoved ? "other234" : "q3m7xk2p");
        EXPECT_EQ(one.leavings(), hasMoved ? 1 : 0);
        EXPECT_EQ(one.keyring.items.contains({std::string{keychainService}, "leaving"}), hasMoved);
    }
}

TEST_F(TwoBoardsTest, AnotherKeyThatCannotBeKeptCallsTheLeavingOff) {
    keyring.fault = [](std::string_view call, const SecretAddress& address) -> std::optional<SecretStatus> {
        const bool isKey = address.account == "joinToken" && call != "query" && call != "remove";
        return isKey ? std::optional{SecretStatus::locked} : std::nullopt;
    };
    enterCode();
    answerJoin();
    background.runAll();
    EXPECT_EQ(state().token->raw, token);
    EXPECT_EQ(leavings(), 0);
    EXPECT_FALSE(keyring.items.contains({std::string{keychainService}, "leaving"}));
}

TEST_F(TwoBoardsTest, ACodeThatIsOnItsWayOutlivesTheOneThatWasUsed) {
    open();
    app->invitations().mintCode();
    rooms.say(ServerMessage::Roster{PartnerSet::both(), SlotNames{"Ann", "Ben"}});
    EXPECT_TRUE(state().isMintingCode);
    http.answer(HttpResponse{201, R"({"code":"481936","expiresAt":1890000000000,"slot":"b"})"});
    EXPECT_TRUE(state().shareCode);
}

TEST_F(TwoBoardsTest, NoLinkOrCodeIsShownThatEnded) {
    open();
    const auto code = [this] {
        app->invitations().mintCode();
        http.answer(HttpResponse{201, R"({"code":"481936","expiresAt":1890000000000,"slot":"b"})"});
        EXPECT_TRUE(state().shareCode && state().boardLink);
    };
    const auto answerLink = [this](std::string_view id) {
        http.answer(HttpResponse{200, "{}"});
        EXPECT_FALSE(state().shareCode || state().boardLink);
        http.answer(HttpResponse{201, R"({"inviteId":")" + std::string{id} + R"(","link":"https://x/for/)" +
                                          std::string{id} + R"(","expiresAt":1890000000000})"});
        EXPECT_EQ(state().boardLink->inviteId, id);
    };
    code();
    app->invitations().resetLinks();
    answerLink("secondlink");
    code();
    rooms.say(ServerMessage::Roster{PartnerSet::both(), SlotNames{"Ann", "Ben"}});
    EXPECT_FALSE(state().shareCode) << "whoever came has used it";
    code();
    app->releasePartner();
    answerLink("thirdlink1");
    // The partner's device has replaced it.
    app->invitations().checkLink();
    http.answer(HttpResponse{201, R"({"inviteId":"fourthlink","link":"https://x/for/fourthlink",)"
                                  R"("expiresAt":1890000000000})"});
    EXPECT_EQ(state().boardLink->inviteId, "fourthlink");
    app->invitations().checkLink();
    http.answer(std::unexpected(HttpFailure{"no route"}));
    EXPECT_TRUE(state().boardLink && state().notice.empty());
}

TEST_F(TwoBoardsTest, WhatIsNoLinkIsCalledThat) {
    for (const auto& [text, told] : std::vector<std::pair<std::string, std::string>>{
             {" \n", "paste the link they sent you, and in you come."},
             {"https://example.org/", "that's no lumaro link. paste the whole message they sent you?"}}) {
        app->pairing().joinByLink(text);
        EXPECT_EQ(std::get<PairingPhase::Failed>(state().pairing.value).message, told);
    }
}

} // namespace
} // namespace lumaro
