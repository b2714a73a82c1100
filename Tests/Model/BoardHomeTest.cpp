// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

constexpr std::string_view roomCard = R"({"room":"lumaro","v":1})";
constexpr std::string_view joinedHome =
    R"({"token":"lm1.q3m7xk2p.b.nbswy3dpo5xxe3de","coupleId":"q3m7xk2p","partnerName":"Ann","slot":"b","status":"joined"})";

/// A new person, with a build that has no server.
class BoardHomeTest : public testing::Test, protected AppFixture {
protected:
    BoardHomeTest() : AppFixture("") { start(); }

    template <class Phase>
    bool isIn() const {
        return std::holds_alternative<Phase>(state().pairing.value);
    }
    std::string failure() const { return std::get<PairingPhase::Failed>(state().pairing.value).message; }
    void give(std::string_view address) {
        app->home().check(address);
        EXPECT_TRUE(http.answer(HttpResponse{200, std::string{roomCard}}));
        app->home().useChecked();
    }
};

TEST_F(BoardHomeTest, WithoutAServerNobodyIsAskedForAnything) {
    EXPECT_TRUE(http.requests.empty()) << "no invite can wait on a server that nobody has named";
    EXPECT_EQ(state().onboarding, OnboardingStep::welcome);
    app->pairing().startOurBoard();
    EXPECT_EQ(failure(), "first say where our board is to live.");
    app->pairing().joinByCode("123456");
    EXPECT_TRUE(isIn<PairingPhase::NeedsServer>());
    EXPECT_TRUE(http.requests.empty());
}

TEST_F(BoardHomeTest, AnAddressIsKeptOnceARoomHasAnsweredThere) {
    app->home().check("board.example");
    app->home().useChecked();
    EXPECT_EQ(app->serverURL(), "") << "nothing has answered yet";
    http.answer(std::unexpected(HttpFailure{"no route"}));
    EXPECT_TRUE(std::holds_alternative<AddressCheck::Bad>(state().addressCheck.value));
    app->home().check("first.example");
    give("board.example");
    EXPECT_EQ(http.open(), 0U) << "the one before is not waited for";
    EXPECT_EQ(app->serverURL(), "https://board.example");
    rebuild();
    EXPECT_EQ(app->serverURL(), "https://board.example");
    app->pairing().startOurBoard();
    start();
    EXPECT_EQ(http.requests.back().url, "https://board.example/couples");
}

TEST_F(BoardHomeTest, ACodeThatWaitsIsTriedAtTheAddressThatIsGiven) {
    app->pairing().joinByCode("123456");
    give("http://192.168.1.4:7700");
    EXPECT_EQ(http.requests.back().url, "http://192.168.1.4:7700/joins/code");
    http.answer(HttpResponse{404, R"({"code":"code_not_found","message":""})"});
    app->pairing().joinByCode("654321");
    http.answer(HttpResponse{200, std::string{joinedHome}});
    background.runAll();
    EXPECT_EQ(rooms.addresses.back().serverURL, "http://192.168.1.4:7700");
    app->home().check("other.example");
    http.answer(HttpResponse{200, std::string{roomCard}});
    app->home().useChecked();
    EXPECT_EQ(app->serverURL(), "http://192.168.1.4:7700") << "a board is not moved by that";
}

TEST_F(BoardHomeTest, ALinkBringsItsServerUnlessStrangersWouldReadAlong) {
    app->pairing().joinByLink("http://board.example/for/k7pq2m5x");
    EXPECT_NE(failure().find("https"), std::string::npos);
    EXPECT_TRUE(http.requests.empty());
    app->pairing().joinByLink("http://ada-laptop.local:7700/for/k7pq2m5x");
    EXPECT_EQ(http.requests.back().url, "http://ada-laptop.local:7700/joins/link");
    http.answer(HttpResponse{200, std::string{joinedHome}});
    background.runAll();
    rebuild();
    EXPECT_EQ(app->serverURL(), "http://ada-laptop.local:7700");
}

TEST_F(BoardHomeTest, ARoomOfOnesOwnIsKeptOnceItAnswersAndComesBackWithTheProgram) {
    app->people().setMyName("Ann");
    app->home().keepHere();
    app->home().keepHere();
    EXPECT_EQ(homeRoom.asked, std::vector<std::uint16_t>{0}) << "one at a time";
    homeRoom.answer(HomeRoom::Running{.port = 7712, .host = "ada-laptop.local"});
    EXPECT_EQ(http.requests.back().url, "http://127.0.0.1:7712/room");
    http.answer(std::unexpected(HttpFailure{"refused"}));
    EXPECT_EQ(app->serverURL(), "");
    pass(Seconds{1});
    http.answer(HttpResponse{200, std::string{roomCard}});
    EXPECT_EQ(app->serverURL(), "http://127.0.0.1:7712");
    app->people().setMyName("Anna");
    EXPECT_EQ(nearby.announced, (std::vector<std::string>{"Ann:7712", "Anna:7712"}));
    EXPECT_EQ(nearby.announcing, 1);
    give("board.example");
    rebuild();
    start();
    EXPECT_EQ(homeRoom.asked.back(), 7712) << "the partner knows no other port";
    homeRoom.answer(HomeRoom::Running{.port = 7712, .host = "ada-laptop.local"});
    while (http.answer(HttpResponse{200, std::string{roomCard}})) {
    }
    EXPECT_EQ(app->serverURL(), "https://board.example") << "what was said last counts";
    app->home().keepHere();
    homeRoom.answer(HomeRoom::Running{.port = 7712, .host = "ada-laptop.local"});
    http.answer(HttpResponse{200, std::string{roomCard}});
    EXPECT_EQ(app->serverURL(), "http://127.0.0.1:7712");
    app->home().stopKeeping();
    EXPECT_TRUE(homeRoom.stops == 1 && nearby.announcing == 0 && app->serverURL().empty());
    const auto asked = homeRoom.asked.size();
    rebuild();
    start();
    EXPECT_EQ(homeRoom.asked.size(), asked) << "switched off is switched off";
}

TEST_F(BoardHomeTest, ARoomThatDoesNotAnswerIsNotKept) {
    app->home().keepHere();
    homeRoom.answer(HomeRoom::Running{.port = 7712, .host = "ada-laptop.local"});
    for (int knock = 0; http.answer(std::unexpected(HttpFailure{"refused"})); ++knock) {
        ASSERT_LT(knock, 100);
        pass(Seconds{1});
    }
    EXPECT_EQ(state().keptHere, KeptHere{KeptHere::Failed{}});
    EXPECT_FALSE(defaults.boolean("keepsRoom").value_or(false));
    EXPECT_EQ(nearby.announcing, 0);
}

TEST_F(BoardHomeTest, ACodeIsTriedOnTheRoomsNearbyWhereNoServerIsSet) {
    nearby.tell({{"Ann\nor so", "ada-laptop.local", 7700}, {"far", "board.example", 80}, {"Cleo", "10.0.0.7", 7701}});
    ASSERT_EQ(state().roomsNearby.size(), 2U) << "one that is far is none";
    EXPECT_EQ(state().roomsNearby.at(0).name.find('\n'), std::string::npos);
    EXPECT_TRUE(http.requests.empty()) << "nobody joins a room because it is there";
    for (const auto* url : {"http://ada-laptop.local:7700/joins/code", "http://10.0.0.7:7701/joins/code"}) {
        if (http.requests.empty()) app->pairing().joinByCode("123456");
        EXPECT_EQ(http.requests.back().url, url);
        http.answer(HttpResponse{404, R"({"code":"code_not_found","message":""})"});
    }
    EXPECT_TRUE(isIn<PairingPhase::NeedsServer>());
    EXPECT_EQ(app->serverURL(), "");
    app->pairing().joinByCode("654321");
    http.answer(std::unexpected(HttpFailure{"it has just gone"}));
    http.answer(HttpResponse{200, std::string{joinedHome}});
    background.runAll();
    EXPECT_EQ(app->serverURL(), "http://10.0.0.7:7701");
    EXPECT_TRUE(nearby.browsing == 0 && state().roomsNearby.empty()) << "on a board nobody looks for others";
    app->leaveBoard();
    EXPECT_EQ(nearby.browsing, 1);
}

} // namespace
} // namespace lumaro
