// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/AppStatus.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

constexpr Coordinates alfama{38.7139427, -9.1394113};

struct PlaceTest : testing::Test, AppFixture {
    void SetUp() override { goOnBoard(); }
    void shareFrom(Coordinates at) {
        app->place().share(true);
        positions.answer(at);
        pass(Seconds{0.3});
    }
    const std::optional<Here>& told() const { return rooms.presences.back().here; }
    std::string asked() const { return http.requests.back().url; }
};

TEST_F(PlaceTest, NothingIsLookedForUntilThePersonSaysYesAndNothingIsToldAfterTheySayNo) {
    pass(Seconds{600});
    EXPECT_TRUE(positions.precisions.empty());
    EXPECT_EQ(state().placeConsent, Consent::notAsked);
    shareFrom(alfama);
    EXPECT_EQ(told()->label, "lisboa");
    EXPECT_EQ(state().locationAccess, LocationAccess::authorized);
    rebuild();
    EXPECT_EQ(state().placeConsent, Consent::yes);
    EXPECT_EQ(positions.open(), 0U) << "there is nobody to share it with yet";
    goOnBoard();
    positions.answer(alfama);
    pass(Seconds{0.3});
    EXPECT_EQ(told()->label, "lisboa");
    app->place().share(false);
    pass(Seconds{0.3});
    EXPECT_EQ(told(), std::nullopt);
    const auto before = rooms.presences.size();
    pass(Seconds{600});
    EXPECT_EQ(positions.open(), 0U);
    EXPECT_EQ(rooms.presences.size(), before);
}

TEST_F(PlaceTest, AnotherBoardLearnsItFromTheStartAndNoBoardNothing) {
    shareFrom(alfama);
    app->leaveBoard();
    background.runAll();
    EXPECT_EQ(state().ownPresence.here, std::nullopt);
    EXPECT_EQ(positions.open(), 0U);
    app->pair("lm1.otherboard.b.nbswy3dpo5xxe3de", [](const auto&) {});
    background.runAll();
    positions.answer(alfama);
    EXPECT_TRUE(asked().ends_with("/couples/otherboard/weather?lat=38.71&lon=-9.14")) << asked();
}

TEST_F(PlaceTest, WhatPeopleSetIsKept) {
    app->place().setPrecision(HerePrecision::block);
    app->place().choose(ChosenPlace{"Berlin", "DE", "Europe/Berlin", 52.52437, 13.41053});
    app->place().share(true);
    app->place().rename("at Bo's");
    EXPECT_TRUE(state().isPlaceNamed);
    rebuild();
    EXPECT_EQ(state().precision, HerePrecision::block);
    EXPECT_EQ(state().chosenPlace->name, "Berlin");
    goOnBoard();
    pass(Seconds{0.3});
    EXPECT_EQ(told()->label, "at Bo's");
    EXPECT_EQ(told()->lat, 52.524);
    EXPECT_EQ(std::get<std::string>(defaults.values.at("locationPlaceBook")),
              R"({"names":{"52.524,13.411":"at Bo's"}})");
    EXPECT_EQ(std::get<std::string>(defaults.values.at("locationPrecision")), "block");
    app->place().choose(std::nullopt);
    EXPECT_FALSE(defaults.values.contains("locationByHand"));
    // Settings that somebody has damaged cost what they said, and nothing more.
    defaults.setString("locationPrecision", "street");
    defaults.setString("locationPlaceBook", "{\"names\":");
    defaults.setString("locationByHand", R"({"name":"x","country":"","zone":"","lat":91,"lon":0})");
    rebuild();
    EXPECT_EQ(state().precision, HerePrecision::neighbourhood);
    EXPECT_EQ(state().chosenPlace, std::nullopt);
}

TEST_F(PlaceTest, WakingUpAndAnotherNetworkLookAgainOnce) {
    shareFrom(alfama);
    const auto searches = positions.precisions.size();
    for (int i = 0; i < 5; ++i) signals.changeNetwork();
    pass(Seconds{3});
    EXPECT_EQ(positions.precisions.size(), searches + 1);
}

// The digits that say more than a hundred metres, in everything that leaves the program: to the room, over HTTP, to the
// log, to the disk and to scripts.
TEST_F(PlaceTest, TheFineDigitsAreNowhere) {
    app->place().setPrecision(HerePrecision::block);
    shareFrom(alfama);
    app->place().rename("home");
    http.answer(HttpResponse{503, ""});
    http.answer(HttpResponse{200, "{}"});
    pass(Seconds{240});
    positions.answer({38.7141938, -9.1391177});
    pass(Seconds{240});
    positions.answer({LocationAccess::restricted, std::nullopt});
    app->shutdown();
    background.runAll();

    std::string all = statusJson(state());
    for (const auto& presence : rooms.presences) {
        all += *Wire::encode(ClientMessage{ClientMessage::Presence{presence}});
    }
    for (const auto& request : http.requests) all += request.url + request.body;
    for (const auto& line : log.lines) all += line + "\n";
    all += files.everything();
    for (const auto& [key, value] : defaults.values) {
        all += key +
               std::visit(Overloaded{[](const std::string& text) { return text; }, [](bool) { return std::string{}; }},
                          value);
    }
    EXPECT_NE(all.find("38.714"), std::string::npos) << "the block is told";
    for (const auto* fine : {"38.7139", "9.1394", "38.7141", "9.1391"}) {
        EXPECT_EQ(all.find(fine), std::string::npos) << fine << " in " << all;
    }
}

} // namespace
} // namespace lumaro
