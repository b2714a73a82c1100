// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

#include <string>

namespace lumaro {
namespace {

class AppSessionTest : public testing::Test, protected AppFixture {
protected:
    void TearDown() override {
        for (const auto& line : log.lines) EXPECT_EQ(line.find("nbswy3dpo5xxe3de"), std::string::npos) << line;
    }
    bool hasKeychain(std::string_view account) const {
        return keyring.items.contains({std::string{keychainService}, std::string{account}});
    }
    static std::string joinedAs(std::string_view status, std::string_view token) {
        return R"({"token":")" + std::string{token} +
               R"(","coupleId":"q3m7xk2p","partnerName":"Ben","slot":"a","status":")" + std::string{status} + "\"}";
    }
};

TEST_F(AppSessionTest, StartGoesThroughItsStepsInOrder) {
    defaults.setString("openInvite", "old");
    defaults.setBoolean("needsInviteNudge", true);
    rebuild();
    EXPECT_FALSE(defaults.values.contains("openInvite"));
    EXPECT_FALSE(defaults.values.contains("needsInviteNudge"));
    EXPECT_EQ(state().board.items.size(), 1U) << "the window is never empty";
    keyring.fault = [this](std::string_view call, const SecretAddress& address) -> std::optional<SecretStatus> {
        EXPECT_TRUE(wallpaper.calls.size() == 1 && loginItem.attempts == 1 && signals.listening() == 1)
            << call << " " << address.account << " comes last";
        return std::nullopt;
    };
    start();
    EXPECT_EQ(wallpaper.calls, std::vector<std::string>{"on"});
    EXPECT_EQ(log.lines, (std::vector<std::string>{"app: registered to open at login",
                                                   "app: restoreSession: no token and never paired"}));
    EXPECT_EQ(http.requests.back().url, "https://board.example/handoff");
}

TEST_F(AppSessionTest, LaunchAtLoginIsOfferedOnceEvenWhenItFails) {
    loginItem.failure = "read-only";
    start();
    EXPECT_TRUE(hasLogged("app: could not register for login: read-only"));
    loginItem.failure.reset();
    rebuild();
    start();
    EXPECT_EQ(loginItem.attempts, 1);
}

TEST_F(AppSessionTest, EveryRowOfTheSessionsStatesIsTold) {
    struct Row {
        std::string name;
        std::optional<std::string> stored;
        bool wasPaired;
        std::optional<SecretStatus> refusal;
        bool hasToken, isLocked, asksForHandoff;
    };
    const std::string good{token};
    const std::vector<Row> rows{
        {"never paired", std::nullopt, false, std::nullopt, false, false, true},
        {"off the board", std::nullopt, true, std::nullopt, false, false, false},
        {"on the board", good, true, std::nullopt, true, false, false},
        {"a token that does not parse", "lm1.nonsense", true, std::nullopt, false, false, false},
        {"keychain locked", good, true, SecretStatus::locked, false, true, false},
        {"no keyring and never paired", std::nullopt, false, SecretStatus::noService, false, false, true},
        {"no keyring, paired before", std::nullopt, true, SecretStatus::noService, false, true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        AppFixture one;
        if (row.stored) one.keyring.items[{std::string{keychainService}, "joinToken"}] = *row.stored;
        if (row.wasPaired) one.defaults.setString("pairedCoupleId", "q3m7xk2p");
        one.keyring.refusal = row.refusal;
        one.start();
        EXPECT_EQ(one.state().isRestoring, row.isLocked) << "restoring goes on while the keychain is tried";
        for (int pause = 0; pause < 6; ++pause) one.pass(Seconds{2});
        EXPECT_EQ(one.state().token.has_value(), row.hasToken);
        EXPECT_EQ(one.state().keychainLocked, row.isLocked);
        EXPECT_EQ(!one.http.requests.empty(), row.asksForHandoff);
        EXPECT_EQ(one.state().wasPaired, row.wasPaired);
        EXPECT_FALSE(one.state().isRestoring);
    }
}

TEST_F(AppSessionTest, ARefusedTokenIsToldOnce) {
    goOnBoard();
    for (int i = 0; i < 2; ++i) rooms.say(ServerMessage::Error{{"unauthorized"}, "gone"});
    EXPECT_TRUE(state().connectionRejected);
    EXPECT_FALSE(state().presence.isPartnerOnline);
    EXPECT_EQ(std::ranges::count(log.lines, "app: the room no longer knows this mac's token"), 1);
}

TEST_F(AppSessionTest, AnInviteThatWaitsIsJoinedQuietly) {
    start();
    http.answer(HttpResponse{200, R"({"inviteId":"abcdefgh12"})"});
    EXPECT_TRUE(hasLogged("app: an invite was waiting for this mac"));
    EXPECT_EQ(state().pairing, PairingPhase{});
    http.answer(HttpResponse{200, joinedAs("joined", token)});
    background.runAll();
    ASSERT_TRUE(state().token);
    EXPECT_EQ(keyring.items.begin()->second, token);
    EXPECT_EQ(state().arrival->partnerName, "Ben");
    pass(Seconds{6});
    EXPECT_FALSE(state().arrival);
}

TEST_F(AppSessionTest, WithoutAnInviteTheFirstRunBeginsAndStaysWhereItWas) {
    start();
    http.answer(HttpResponse{404, R"({"code":"not_found","message":"none"})"});
    EXPECT_TRUE(hasLogged("app: no invite waiting for this mac; first run it is"));
    app->pairing().setOnboarding(OnboardingStep::makeItYours);
    rebuild();
    EXPECT_EQ(state().onboarding, OnboardingStep::makeItYours);
}

TEST_F(AppSessionTest, StartingABoardKeepsItsLinkAndToken) {
    start();
    app->pairing().startOurBoard();
    EXPECT_TRUE(std::holds_alternative<PairingPhase::Working>(state().pairing.value));
    http.answer(HttpResponse{201, R"({"coupleId":"q3m7xk2p","token":")" + std::string{token} +
                                      R"(","invite":{"inviteId":"abcdefgh12","link":"https://x/for/abcdefgh12",)"
                                      R"("expiresAt":1790000000000}})"});
    background.runAll();
    EXPECT_TRUE(hasLogged("app: started a new board"));
    EXPECT_EQ(state().onboarding, OnboardingStep::bringThemOver);
    EXPECT_EQ(defaults.string("pairedCoupleId"), "q3m7xk2p");
    EXPECT_TRUE(hasKeychain("joinToken") && hasKeychain("boardLink"));
    rebuild();
    EXPECT_EQ(state().boardLink->url, "https://x/for/abcdefgh12");
}

TEST_F(AppSessionTest, APairingAskedForAtOnceWaitsForTheSessionAndGoesBeforeAnInvite) {
    app->start();
    app->pairing().joinByLink("lumaro://join-invite?i=k7pq2m5x");
    EXPECT_TRUE(http.requests.empty()) << "the keychain has not answered yet";
    background.runAll();
    ASSERT_EQ(http.requests.size(), 1U);
    EXPECT_NE((http.requests.back().url + http.requests.back().body).find("k7pq2m5x"), std::string::npos);

    AppFixture late;
    late.start();
    late.app->pairing().joinByCode("123456");
    EXPECT_EQ(late.http.requests.size(), 2U);
    EXPECT_EQ(late.http.open(), 1U) << "nobody waits for the invite any more";
}

TEST_F(AppSessionTest, AnInviteOpenedOnABoardAsksAndKeepsTheOldBoardOnNo) {
    goOnBoard();
    relay(noteOps("hello", PartnerID::b));
    for (const bool accepts : {false, true}) {
        app->pairing().joinByLink("https://other.example/for/k7pq2m5x");
        EXPECT_EQ(http.requests.back().url, "https://other.example/handoff");
        http.answer(HttpResponse{200, R"({"inviteId":"k7pq2m5x","inviter":"Cleo"})"});
        EXPECT_EQ(state().pairing.value,
                  PairingPhase::Value(PairingPhase::Asking{"Cleo", "https://other.example", true, false, 1}));
        EXPECT_EQ(state().partnerDisplayName, "Ben");
        const auto asked = http.requests.size();
        app->pairing().acceptInvite(accepts);
        EXPECT_EQ(http.requests.size(), accepts ? asked + 1 : asked);
        EXPECT_EQ(state().token->raw, token) << "the old key stays until the new one is safe";
        EXPECT_EQ(app->board().items.size(), 1U);
    }
    http.answer(HttpResponse{200, R"({"token":"lm1.other234.b.nbswy3dpo5xxe3de","coupleId":"other234",)"
                                  R"("partnerName":"Cleo","slot":"b","status":"joined"})"});
    background.runAll();
    EXPECT_EQ(state().token->coupleId, "other234");
    EXPECT_EQ(app->serverURL(), "https://other.example");
    EXPECT_EQ(rooms.addresses.back().serverURL, "https://other.example");
    EXPECT_TRUE(app->board().items.empty());
    EXPECT_EQ(state().partnerNames, (std::map<PartnerID, std::string>{{PartnerID::a, "Cleo"}}));
    EXPECT_EQ(http.requests.back().method + " " + http.requests.back().url,
              "DELETE https://board.example/couples/q3m7xk2p/devices/self");
}

TEST_F(AppSessionTest, AJoinThatFailsLeavesTheOldBoardAlone) {
    goOnBoard();
    app->pairing().joinByLink("https://other.example/for/k7pq2m5x");
    http.answer(HttpResponse{200, R"({"inviteId":"k7pq2m5x"})"});
    app->pairing().acceptInvite(true);
    http.answer(std::unexpected(HttpFailure{"no route"}));
    background.runAll();
    EXPECT_EQ(state().token->raw, token);
    EXPECT_EQ(app->serverURL(), "https://board.example");
    app->pairing().joinByCode("123456");
    EXPECT_EQ(std::get<PairingPhase::Failed>(state().pairing.value).message,
              "you're on a board already; leave it first");
}

TEST_F(AppSessionTest, ALinkBringsItsServer) {
    struct Row {
        std::string text;
        std::string url; ///< of the first request
    };
    const std::vector<Row> rows{
        {"https://room.example:8443/base/for/k7pq2m5x", "https://room.example:8443/base/joins/link"},
        {"come: http://192.168.1.4:7700/dl/k7pq2m5x.", "http://192.168.1.4:7700/joins/link"},
        {"lumaro://join-invite?i=k7pq2m5x", "https://board.example/joins/link"},
        // Any page can open such a link, so a strange server is asked about first.
        {"lumaro://join-invite?i=k7pq2m5x&s=https%3A%2F%2Froom.example", "https://room.example/handoff"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        AppFixture one;
        one.start();
        one.app->pairing().joinByLink(row.text);
        EXPECT_EQ(one.http.requests.back().url, row.url);
        EXPECT_EQ(one.app->serverURL(), "https://board.example") << "not before the board is joined";
    }
}

TEST_F(AppSessionTest, TheInviteThatTheProgramWasDownloadedFromIsJoined) {
    origin.known = {"https://room.example/download", "https://room.example/dl/k7pq2m5x",
                    "https://room.example/dl/k7pq2m5x", "https://old.example/for/abcdefgh"};
    start();
    EXPECT_EQ(http.requests.back().url + http.requests.back().body,
              R"(https://room.example/handoff{"inviteId":"k7pq2m5x"})");
    http.answer(HttpResponse{404, R"({"code":"not_found","message":""})"});
    EXPECT_EQ(http.requests.back().url + http.requests.back().body,
              R"(https://old.example/handoff{"inviteId":"abcdefgh"})");
    http.answer(HttpResponse{200, R"({"inviteId":"abcdefgh","inviter":"Ben"})"});
    EXPECT_TRUE(hasLogged("app: an invite was waiting for this mac"));
    http.answer(HttpResponse{200, joinedAs("joined", token)});
    background.runAll();
    ASSERT_TRUE(state().token);
    EXPECT_EQ(app->serverURL(), "https://old.example");
}

TEST_F(AppSessionTest, ATokenThatIsNoneEndsThePairingWithWords) {
    const std::vector<std::pair<std::string, bool>> answers{
        {R"({"token":"lm1.nonsense","coupleId":"q3m7xk2p","partnerName":"Ben","slot":"a","status":"joined"})", true},
        {R"({"coupleId":"q3m7xk2p","token":"lm1.nonsense","invite":{"inviteId":"abcdefgh12","link":"https://x/for/a",)"
         R"("expiresAt":1790000000000}})",
         false}};
    for (const auto& [body, isJoin] : answers) {
        AppFixture one;
        one.start();
        isJoin ? one.app->pairing().joinByCode("123456") : one.app->pairing().startOurBoard();
        int told = 0;
        one.app->onNews([&](const AppNews&) { ++told; });
        one.http.answer(HttpResponse{200, body});
        one.background.runAll();
        EXPECT_TRUE(std::holds_alternative<PairingPhase::Failed>(one.state().pairing.value)) << body;
        EXPECT_EQ(told, 1);
    }
}

TEST_F(AppSessionTest, FiveDigitsAreNoCodeAndAskNobody) {
    start();
    const auto asked = http.requests.size();
    app->pairing().joinByCode("12345");
    EXPECT_EQ(http.requests.size(), asked);
    EXPECT_EQ(std::get<PairingPhase::Failed>(state().pairing.value).message, "a code is six digits.");
}

TEST_F(AppSessionTest, APersonChoosesWhoTheyAreAndJoinsAgain) {
    start();
    app->pairing().joinByCode("12 34-56");
    http.answer(
        HttpResponse{409, R"({"code":"choose_person","message":"","names":{"a":"Ann","b":"Ben"},"suggested":"b"})"});
    ASSERT_TRUE(std::holds_alternative<PairingPhase::Choosing>(state().pairing.value));
    app->pairing().chooseOneself(PartnerID::a);
    EXPECT_NE(http.requests.back().body.find(R"("code":"123456")"), std::string::npos);
    EXPECT_NE(http.requests.back().body.find(R"("slot":"a")"), std::string::npos);
    http.answer(HttpResponse{200, joinedAs("rejoined", token)});
    background.runAll();
    EXPECT_EQ(state().arrival->status, JoinStatus::rejoined);
    EXPECT_FALSE(state().onboarding);
}

TEST_F(AppSessionTest, WithoutAKeyringThePersonIsAskedAndDecides) {
    for (const bool agrees : {true, false}) {
        AppFixture one;
        one.keyring.refusal = SecretStatus::noService;
        one.start();
        std::optional<std::expected<void, std::string>> paired;
        one.app->pair(token, [&](auto outcome) { paired = outcome; });
        one.background.runAll();
        EXPECT_EQ(one.state().secretPlace, SecretPlace::asking);
        EXPECT_FALSE(paired) << "nothing is kept before the answer";
        one.app->keepSecretsInFile(agrees);
        one.background.runAll();
        ASSERT_TRUE(paired);
        EXPECT_EQ(paired->has_value(), agrees);
        EXPECT_EQ(one.secretFile.items.size(), agrees ? 1U : 0U);
        EXPECT_EQ(one.state().token.has_value(), agrees);
        one.rebuild();
        EXPECT_EQ(one.state().secretPlace, agrees ? SecretPlace::file : SecretPlace::keyring);
    }
}

TEST_F(AppSessionTest, AnotherBoardTakesThePlaceOfTheOldOneAndTheSameOneStays) {
    goOnBoard();
    relay(noteOps("hello", PartnerID::b));
    app->pair(token, [](auto) {});
    background.runAll();
    EXPECT_EQ(app->board().items.size(), 1U);
    app->pair("lm1.other234.a.nbswy3dpo5xxe3de", [](auto) {});
    background.runAll();
    EXPECT_TRUE(app->board().items.empty());
    EXPECT_EQ(state().partnerDisplayName, "");
    EXPECT_EQ(rooms.addresses.back().token.coupleId, "other234");
}

TEST_F(AppSessionTest, LeavingIsDoneHereWhateverTheServiceSays) {
    goOnBoard();
    relay(noteOps("hello", PartnerID::b));
    app->leaveBoard();
    background.runAll();
    http.answer(std::unexpected(HttpFailure{"no route"}));
    EXPECT_FALSE(state().token);
    EXPECT_FALSE(hasKeychain("joinToken"));
    EXPECT_FALSE(defaults.string("pairedCoupleId"));
    EXPECT_EQ(rooms.listener, nullptr);
    EXPECT_EQ(state().onboarding, OnboardingStep::welcome);
    EXPECT_NE(app->board().items.size(), 0U) << "the starter board hangs there again";
    EXPECT_EQ(app->liveBoard().act({}).error(), ActFault::notOnBoard);
}

TEST_F(AppSessionTest, WhatTheServiceDidNotHearOfALeavingIsSaidAgain) {
    goOnBoard();
    const auto asksToLeave = [this] {
        return http.requests.back().method == "DELETE" && http.requests.back().url.ends_with("/devices/self");
    };
    app->leaveBoard();
    EXPECT_TRUE(asksToLeave());
    app->shutdown();
    rebuild(); // before the service has answered
    http.requests.clear();
    start();
    EXPECT_TRUE(std::ranges::any_of(http.requests, [](const auto& one) { return one.method == "DELETE"; }));
    EXPECT_FALSE(state().token);
    while (http.answer(HttpResponse{200, "{}"})) continue;
    background.runAll();
    EXPECT_FALSE(hasKeychain("leaving"));
}

TEST_F(AppSessionTest, ABoardIsLeftAlsoWhenTheKeyringStopsBeforeItHeardOfIt) {
    goOnBoard();
    keyring.refusal = SecretStatus::locked;
    app->leaveBoard();
    rebuild();
    http.requests.clear();
    start();
    for (int pause = 0; pause < 6; ++pause) pass(Seconds{2});
    EXPECT_TRUE(state().keychainLocked) << "nothing is known yet";
    keyring.refusal.reset();
    app->retryKeychain();
    pass(Seconds{0});
    EXPECT_FALSE(state().token || state().keychainLocked);
    EXPECT_EQ(rooms.listener, nullptr);
    EXPECT_EQ(std::ranges::count(http.requests, "DELETE", &HttpRequest::method), 1);
    EXPECT_FALSE(hasKeychain("joinToken"));
    EXPECT_TRUE(hasKeychain("leaving"));
    app->pair(token, [](auto) {});
    background.runAll();
    EXPECT_TRUE(state().token) << "who comes back to that board is on it";
    rebuild();
    start();
    EXPECT_TRUE(state().token);
}

TEST_F(AppSessionTest, LeavingForgetsBothNamesWhicheverSlotThisDeviceHas) {
    app->people().setMyName("Ann");
    app->pair("lm1.q3m7xk2p.b.nbswy3dpo5xxe3de", [](auto) {});
    background.runAll();
    rooms.say(ServerMessage::Roster{PartnerSet::both(), SlotNames{"Ben", "Ann"}});
    EXPECT_EQ(state().partnerDisplayName, "Ben");
    app->leaveBoard();
    EXPECT_EQ(state().myDisplayName, "Ann");
    EXPECT_EQ(state().partnerDisplayName, "");
    EXPECT_TRUE(state().partnerNames.empty());
}

TEST_F(AppSessionTest, ALineThatCannotBeOpenedIsNotLoggedAsOne) {
    rooms.refusal = "no disk";
    keyring.items[{std::string{keychainService}, "joinToken"}] = token;
    defaults.setString("pairedCoupleId", "q3m7xk2p");
    start();
    EXPECT_TRUE(hasLogged("app: connect: SyncClient init failed: no disk"));
    EXPECT_FALSE(hasLogged("app: connect: client created for lm1.q3m7xk2p.a.••••"));
    rooms.refusal.reset();
    app->connect();
    rooms.listener->opened({});
    EXPECT_TRUE(hasLogged("app: connect: client created for lm1.q3m7xk2p.a.••••"));
    app->leaveBoard();
    EXPECT_TRUE(hasLogged("app: message stream finished"));
}

TEST_F(AppSessionTest, FacesAndPermissionsAreKnownFromTheStartAndAgainWhenThePersonComesBack) {
    contacts.card = {.fullName = "Ann", .picturePath = "/ann.png"};
    start();
    notifications.answer(NotificationPermission::denied);
    EXPECT_EQ(state().myPicturePath, "/ann.png");
    EXPECT_EQ(state().notificationPermission, NotificationPermission::denied);
    contacts.card.picturePath.reset();
    app->becameActive();
    notifications.answer(NotificationPermission::authorized);
    EXPECT_EQ(state().myPicturePath, std::nullopt);
    EXPECT_EQ(state().notificationPermission, NotificationPermission::authorized);
}

TEST_F(AppSessionTest, ABoardIsThereAgainBeforeTheRoomSpeaks) {
    goOnBoard();
    relay(noteOps("hello", PartnerID::b));
    app->shutdown();
    rebuild();
    start();
    EXPECT_EQ(app->board().items.size(), 1U);
    EXPECT_EQ(state().board.items.size(), 1U);
}

} // namespace
} // namespace lumaro
