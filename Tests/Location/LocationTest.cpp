// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Location/LocationWatcher.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/Fakes/FakePlaces.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

constexpr Coordinates alfama{38.71394, -9.13941};
constexpr Coordinates berlin{52.5163, 13.3777};

/// So far north of a point.
Coordinates north(Coordinates of, double metres) {
    return {of.latitude + metres / 6'371'000 * 180 / std::numbers::pi, of.longitude};
}

TEST(HereTest, WhatLeavesIsCoarseAndItsNameFits) {
    Here here;
    here.lat = berlin.latitude;
    here.lon = berlin.longitude;
    here.label = "  Mitte \n";
    const auto coarse = here.coarsened(HerePrecision::neighbourhood);
    EXPECT_EQ((std::pair{coarse.lat, coarse.lon}), (std::pair{52.52, 13.38}));
    EXPECT_EQ(coarse.label, "Mitte");
    const auto fine = here.coarsened(HerePrecision::block);
    EXPECT_EQ((std::pair{fine.lat, fine.lon}), (std::pair{52.516, 13.378}));
    EXPECT_FALSE(fine.isSameSpot(coarse));
    here.lat = -0.004;
    here.lon = -179.9999;
    here.label = " \t\n";
    EXPECT_EQ(
        Wire::encode(here.coarsened(HerePrecision::neighbourhood)),
        R"({"lat":0,"lon":-180,"label":"somewhere","tz":"","precision":"neighbourhood","since":0,"sampledAt":0})");
    // Characters as people count them.
    std::string families;
    for (int i = 0; i < 41; ++i) families += "👩‍👩‍👧";
    EXPECT_EQ(Here::clampLabel(families).size(), families.size() / 41 * 40);
    std::string marks = "o";
    for (int i = 0; i < 100'000; ++i) marks += "\u0308";
    EXPECT_EQ(Here::clampLabel(marks).size(), Here::maxLabelBytes - 1) << "no half character";
}

TEST(LocationLogicTest, APlaceIsNamedByThePersonElseByItsTownElseByItsPart) {
    PlaceBook book;
    const auto label = [&](PlaceFacts facts) { return LocationLogic::label(facts, book, 52.51995, 13.40495); };
    EXPECT_EQ(label({}), "somewhere");
    EXPECT_EQ(label({.subLocality = "Alfama", .locality = "LISBOA", .name = "x", .timeZone = {}}), "lisboa");
    EXPECT_EQ(label({.subLocality = "Camden Town", .locality = {}, .name = "x", .timeZone = {}}), "camden town");
    EXPECT_EQ(label({.subLocality = {}, .locality = std::string(60, 'X'), .name = {}, .timeZone = {}}),
              std::string(40, 'x'));
    EXPECT_EQ(label({.subLocality = {}, .locality = "İzmir", .name = {}, .timeZone = {}}), "izmir");
    EXPECT_TRUE(book.rename(52.5204, 13.4049, "  Our Place "));
    EXPECT_EQ(book.names.begin()->first, "52.52,13.405");
    EXPECT_EQ(label({.subLocality = {}, .locality = "Berlin", .name = {}, .timeZone = {}}), "Our Place");
    EXPECT_EQ(Wire::decode<PlaceBook>(*Wire::encode(book)), book);
    EXPECT_TRUE(book.rename(52.52, 13.405, " \n"));
    EXPECT_TRUE(book.names.empty());
    for (std::size_t i = 0; i < PlaceBook::maxNames; ++i) book.rename(static_cast<double>(i) / 100, 0, "x");
    EXPECT_FALSE(book.rename(80, 80, "one too many"));
    EXPECT_TRUE(book.rename(0, 0, "another name"));
    EXPECT_EQ(book.names.size(), PlaceBook::maxNames);
}

TEST(LocationLogicTest, FartherThan150MetresIsAMove) {
    EXPECT_FALSE(LocationLogic::hasMoved(berlin, north(berlin, 149.99)));
    EXPECT_TRUE(LocationLogic::hasMoved(berlin, north(berlin, 150.1)));
    // Over the date line, at a pole and around the whole earth.
    EXPECT_FALSE(LocationLogic::hasMoved({-17, 179.9995}, {-17, -179.9995}));
    EXPECT_FALSE(LocationLogic::hasMoved({90, 10}, {90, -170}));
    EXPECT_NEAR(metresBetween({0, 0}, {0, 180}), 20'015'087, 1);
}

class ManualWeather final : public WeatherFetching {
public:
    std::unique_ptr<Fetch> weather(double latitude, double longitude, Then then) override {
        asked.push_back({latitude, longitude});
        answer = std::move(then);
        return std::make_unique<Fetch>();
    }
    void say(double tempC, Instant at) {
        Weather weather;
        weather.tempC = tempC;
        weather.sampledAt = at;
        std::exchange(answer, nullptr)(weather);
    }

    std::vector<Coordinates> asked;
    Then answer;
};

struct LocationWatcherTest : testing::Test {
    void begin() { watcher.start(weather); }
    void at(Coordinates position) { positions.answer(position); }
    std::string told() const {
        const auto& here = watcher.current();
        if (!here) return std::string{nameOf(watcher.access())} + (watcher.waitingSince() ? ", waiting" : "");
        return here->label + " " + std::to_string(minutesIn(here->since)) + "/" +
               std::to_string(minutesIn(here->sampledAt)) +
               (here->weather ? " " + std::to_string(static_cast<int>(here->weather->tempC)) : "");
    }
    int minutesIn(Instant instant) const {
        return static_cast<int>(std::chrono::round<std::chrono::minutes>(instant - started).count());
    }
    /// Looks again after the interval and is there.
    void later(Coordinates position) {
        sleeper.advance(Seconds{240});
        at(position);
    }

    const Instant started{1'790'000'000s};
    ManualSleeper sleeper;
    ManualClock clock{sleeper, started};
    RecordingLog log;
    FakePositions positions;
    FakeGeocoder geocoder;
    FakeZone zone;
    ManualWeather weather;
    int news = 0;
    LocationWatcher watcher{{positions, geocoder, zone, sleeper, clock, log}, {}, [this] { ++news; }};
};

TEST_F(LocationWatcherTest, AStayIsToldOnceAndTheNextBeginsBeyond150Metres) {
    begin();
    EXPECT_EQ(told(), "notDetermined, waiting");
    at(alfama);
    EXPECT_EQ(told(), "lisboa 0/0");
    weather.say(21, clock.now());
    EXPECT_EQ(told(), "lisboa 0/0 21");
    later(north(alfama, 140));
    EXPECT_EQ(told(), "lisboa 0/0 21") << "the partner knows it all";
    // 280 m from the beginning of the stay, though not from the last position.
    later(north(alfama, 280));
    EXPECT_EQ(told(), "lisboa 8/8 21");
    // Of the weather at that place the last one is 12 minutes old.
    later(north(alfama, 280));
    weather.say(22, clock.now());
    EXPECT_EQ(told(), "lisboa 8/12 22");
    for (int i = 0; i < 7; ++i) later(north(alfama, 280));
    EXPECT_EQ(told(), "lisboa 8/12 22");
    later(north(alfama, 280));
    EXPECT_EQ(told(), "lisboa 8/44 22") << "half an hour has passed";
    EXPECT_EQ(sleeper.waiting(), 1U) << "one wait, and so one wake-up in four minutes";
}

TEST_F(LocationWatcherTest, WhatIsToldChangesAtOnceWithNamePrecisionAndZone) {
    begin();
    at(alfama);
    EXPECT_TRUE(watcher.rename("Ours"));
    EXPECT_EQ(told(), "Ours 0/0");
    EXPECT_TRUE(watcher.isNamedByPerson());
    EXPECT_TRUE(watcher.rename(""));
    EXPECT_EQ(told(), "lisboa 0/0");
    EXPECT_EQ(watcher.current()->lat, 38.71);
    watcher.setPrecision(HerePrecision::block);
    EXPECT_EQ(watcher.current()->lat, 38.714);
    EXPECT_EQ(positions.precisions.back(), HerePrecision::block);
    zone.zone = "Europe/Lisbon";
    at(alfama);
    EXPECT_EQ(watcher.current()->tz, "Europe/Lisbon");
    EXPECT_EQ(watcher.current()->city, "Lisboa");
    for (const auto& asked : weather.asked) EXPECT_EQ(asked, (Coordinates{38.71, -9.14})) << "never the block";
}

TEST_F(LocationWatcherTest, PlacesAreNamedNoOftenerThanOnceAMinute) {
    begin();
    at(alfama);
    watcher.setPrecision(HerePrecision::block);
    at(berlin);
    EXPECT_EQ(told(), "somewhere 0/0");
    EXPECT_EQ(geocoder.questions, 1);
    sleeper.advance(Seconds{60});
    EXPECT_EQ(told(), "berlin 0/0");
    EXPECT_EQ(geocoder.questions, 2);
    later(berlin);
    EXPECT_EQ(geocoder.questions, 2) << "its name is known";
    later({0, 0});
    EXPECT_EQ(told(), "somewhere 9/9");
    // A clock that was set back does not keep anybody waiting.
    clock.shift(-24h);
    later(berlin);
    EXPECT_EQ(watcher.current()->label, "berlin");
}

TEST_F(LocationWatcherTest, WhereTheSystemTellsNothingNothingIsTold) {
    begin();
    at(alfama);
    for (const auto access : {LocationAccess::denied, LocationAccess::restricted}) {
        later(alfama);
        EXPECT_TRUE(watcher.current());
        sleeper.advance(Seconds{240});
        positions.answer({access, std::nullopt});
        EXPECT_EQ(told(), nameOf(access));
        EXPECT_EQ(watcher.waitingSince(), std::nullopt);
    }
    // A search that finds nothing goes on: there is one, however long it takes.
    sleeper.advance(Seconds{24 * 3600});
    EXPECT_EQ(positions.open(), 1U);
    EXPECT_EQ(told(), "restricted, waiting");
    positions.answer({LocationAccess::authorized, std::nullopt});
    EXPECT_EQ(told(), "authorized, waiting");
    sleeper.advance(Seconds{240});
    at({std::nan(""), 0});
    EXPECT_EQ(told(), "authorized, waiting");
    sleeper.advance(Seconds{240});
    at({0, 0});
    EXPECT_EQ(told().substr(0, 9), "somewhere");
    watcher.stop();
    EXPECT_EQ(told(), "notDetermined");
    EXPECT_EQ(positions.open() + sleeper.waiting(), 0U);
}

TEST_F(LocationWatcherTest, TheLastWeatherStaysAsLongAsItIsFromNear) {
    begin();
    at(alfama);
    weather.say(21, clock.now());
    const auto said = clock.now();
    for (int i = 0; i < 30; ++i) {
        later(alfama);
        if (weather.answer) weather.answer(std::unexpected(NobodyAnswered{}));
    }
    EXPECT_EQ(watcher.current()->weather->sampledAt, said);
    later(north(alfama, 20'000));
    EXPECT_EQ(watcher.current()->weather->tempC, 21);
    later(berlin);
    EXPECT_EQ(watcher.current()->weather, std::nullopt);
    weather.say(4, clock.now());
    EXPECT_EQ(watcher.current()->weather->tempC, 4);
}

TEST_F(LocationWatcherTest, WhoSaysWhereTheyAreIsNotLookedFor) {
    watcher.choose(ChosenPlace{"Lisboa", "PT", "Europe/Lisbon", 38.71667, -9.13333});
    begin();
    EXPECT_EQ(told(), "lisboa 0/0");
    EXPECT_EQ(watcher.current()->tz, "Europe/Berlin") << "the computer's clock";
    weather.say(21, clock.now());
    sleeper.advance(Seconds{720});
    EXPECT_EQ(weather.asked.size(), 2U);
    EXPECT_TRUE(watcher.rename("with Mum"));
    EXPECT_EQ(told(), "with Mum 0/12 21");
    EXPECT_EQ(positions.precisions.size() + static_cast<std::size_t>(geocoder.questions), 0U);
    watcher.choose(std::nullopt);
    EXPECT_EQ(told(), "notDetermined, waiting");
    at(berlin);
    EXPECT_EQ(watcher.current()->label, "berlin");
    watcher.choose(ChosenPlace{"Lisboa", "PT", "Europe/Lisbon", 38.71667, -9.13333});
    EXPECT_EQ(watcher.current()->label, "with Mum");
    EXPECT_EQ(positions.open(), 0U);
}

TEST_F(LocationWatcherTest, ACrossingOfTheDateLineIsAStepAndNoJourney) {
    begin();
    at({-16.5, 179.9999});
    EXPECT_EQ(watcher.current()->lon, 180);
    weather.say(28, clock.now());
    later({-16.5, -179.9999});
    EXPECT_EQ(told(), "somewhere 0/0 28");
    later({90, 0});
    later({90, 120});
    EXPECT_EQ(minutesIn(watcher.current()->since), 8);
}

} // namespace
} // namespace lumaro
