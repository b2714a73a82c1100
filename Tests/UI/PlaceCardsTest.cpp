// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Board/PlaceWords.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "Tests/UI/LiveCardsFixture.h"

#include <cmath>
#include <limits>

namespace lumaro {
namespace {

using PlaceCardsTest = LiveCardsFixture;

TEST_F(PlaceCardsTest, theClocksTellSharedHoursAndThoseOfAPlaceFirst) {
    partner.zone = "Asia/Tokyo";
    EXPECT_EQ(clocks().theirs.time, "23:13");
    EXPECT_EQ(clocks().between, "7 hours ahead");
    partnerIsIn("Europe/Lisbon", now);
    EXPECT_EQ(clocks().theirs.time, "15:13");
    partnerIsIn("", now);
    EXPECT_EQ(clocks().theirs.time, "23:13");
    partner = {};
    partner.zone = "Mars/Base";
    EXPECT_EQ(clocks().theirs.time, "");
}

TEST_F(PlaceCardsTest, onesOwnWindowSaysWhatKeepsItEmptyAndSinceWhen) {
    const auto words = [&] { return face<WindowFace>(LocationPayload{PartnerID::a}).words; };
    place.locationAccess = LocationAccess::denied;
    place.waitingForFixSince = now;
    for (const auto consent : {Consent::notAsked, Consent::no}) {
        place.placeConsent = consent;
        EXPECT_EQ(words(), "let it see where you are");
    }
    place.placeConsent = Consent::yes;
    EXPECT_EQ(words(), "location is off · fix") << "also while it looks again";
    place.locationAccess = LocationAccess::restricted;
    EXPECT_EQ(words(), "location is off · fix");
    place.locationAccess = LocationAccess::authorized;
    EXPECT_EQ(words(), "waiting for a fix · since 16:13");
    place.waitingForFixSince = now - 30h;
    EXPECT_EQ(words(), "waiting for a fix · since 20 september, 10:13");
    place.waitingForFixSince.reset();
    EXPECT_EQ(words(), "waiting for a fix");
}

TEST_F(PlaceCardsTest, aPlaceOfAStrangersNumbersIsToldInSomeWords) {
    constexpr double most = std::numeric_limits<double>::max();
    for (const double number : {-most, -0.0, 1e9, most}) {
        for (const auto moment : {Instant::min(), now, Instant::max()}) {
            partnerIsIn("no/such zone", moment);
            auto& here = *partner.here;
            here.lat = here.lon = number;
            here.label = std::string(10'000, 'x') + "\n";
            here.since = here.weather->sampledAt = moment;
            here.weather->tempC = number;
            here.weather->feelsC = here.weather->hiC = here.weather->loC = number;
            here.weather->windKmh = here.weather->windDeg = number;
            const auto words = placeWords({PartnerID::b}, live());
            EXPECT_EQ(words.label.size(), static_cast<qsizetype>(Here::maxLabelCharacters));
            EXPECT_EQ(words.clock, "");
            for (const auto& line : {words.weather, words.range, words.wind, words.position, words.since, words.age})
                EXPECT_LT(line.size(), 80);
            EXPECT_NE(words.position.left(2), "-0");
        }
    }
}

TEST_F(PlaceCardsTest, aPlaceIsToldWithItsTimeWeatherAndAge) {
    partnerIsIn("Asia/Kolkata", now - 2h);
    const auto window = this->window();
    EXPECT_EQ(window.place, "alfama");
    EXPECT_EQ(window.time, "19:43");
    EXPECT_EQ(window.temperature, "17°");
    EXPECT_EQ(window.sky, Sky::storm);
    EXPECT_EQ(window.words, "as of 17:43");
    EXPECT_EQ(window.weatherAge, "weather as of 17:43");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).between, "3.5 hours ahead");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{.units = TemperatureUnit::fahrenheit}).theirs.words, "62°");
    partnerIsIn("no/such zone", now);
    EXPECT_EQ(face<WindowFace>(LocationPayload{PartnerID::b}).time, "");
}

TEST_F(PlaceCardsTest, oldWeatherSaysHowOldAndFreshNothing) {
    partnerIsIn("Europe/Lisbon", now);
    const std::vector<std::pair<std::chrono::minutes, const char*>> ages{
        {60min, ""}, {61min, "weather as of 14:12"}, {25h, "weather as of 20 september, 14:13"}, {-10min, ""}};
    for (const auto& [age, words] : ages) {
        partner.here->weather->sampledAt = now - age;
        EXPECT_EQ(window().weatherAge, words);
    }
    for (const auto sampledAt : {Instant::min(), Instant::max()}) {
        partner.here->weather->sampledAt = sampledAt;
        EXPECT_LT(window().weatherAge.size(), 60);
    }
}

TEST_F(PlaceCardsTest, theWindowShowsTheSunTheMoonAndTheWeatherOfThePlace) {
    partnerIsIn("Europe/Lisbon", now);
    const auto storm = *window().view;
    EXPECT_NEAR(storm.sunAltitude, 45.3, 1.5); // 15:13 summer time in Lisbon, two days before the equinox
    EXPECT_NEAR(storm.sunAzimuth, 216, 5);
    EXPECT_TRUE(storm.looksSouth());
    EXPECT_GE(storm.clouds.low, 0.9);
    EXPECT_GT(storm.fall, 0.5);
    EXPECT_EQ(storm.scenery, window().view->scenery);
    // A clear sky is day or night by the sun, whatever the weather said an hour ago.
    partner.here->weather->code = 0;
    EXPECT_EQ(window().sky, Sky::clear);
    now += 8h;
    EXPECT_EQ(window().sky, Sky::night);
    partner.here->weather.reset();
    EXPECT_TRUE(window().view && !window().sky && window().temperature.isEmpty());
    EXPECT_LT(window().view->sunAltitude, 0);
    const auto before = window();
    now += 20s;
    EXPECT_EQ(window(), before) << "changes within a minute";
}

TEST_F(PlaceCardsTest, snowLiesOnRoofsWhereItSnowsAndSettlesInFrost) {
    partnerIsIn("Europe/Lisbon", now);
    partner.here->weather->code = 73;
    EXPECT_LT(window().view->snowOnRoofs, 1);
    partner.here->weather->tempC = -3;
    EXPECT_EQ(window().view->snowOnRoofs, 1);
    partner.here->weather->code = 0;
    EXPECT_EQ(window().view->snowOnRoofs, 0);
}

TEST_F(PlaceCardsTest, weatherAndPlacesOfAStrangersDeviceMakeSomeView) {
    constexpr double most = std::numeric_limits<double>::max();
    for (const double wild : {-most, -1.0, 0.0, 1e9, most}) {
        for (const auto when : {Instant::min(), now, Instant::max()}) {
            partnerIsIn("Europe/Lisbon", when);
            auto& weather = *partner.here->weather;
            weather.tempC = wild;
            weather.cloudLow = weather.cloudMid = weather.cloudHigh = wild;
            weather.visibilityM = weather.windDeg = weather.windKmh = wild;
            partner.here->lat = wild;
            const auto view = *window().view;
            for (const double part : {view.clouds.low, view.clouds.middle, view.clouds.high, view.mist, view.fall}) {
                EXPECT_TRUE(part >= 0 && part <= 1) << part;
            }
            EXPECT_TRUE(view.windKmh >= 0 && view.windKmh <= 120 && std::abs(view.sunAltitude) <= 90);
            EXPECT_LE(window().temperature.size(), 5);
        }
    }
}

// The edges of summer time in 2026 and 2027, as the time zone database has them.
TEST_F(PlaceCardsTest, theHoursBetweenAreRightOnBothSidesOfEveryEdge) {
    using namespace std::chrono;
    const auto at = [](int y, unsigned m, unsigned d, int h, int min = 0) {
        return Instant{sys_days{year{y} / month{m} / day{d}} + hours{h} + minutes{min}};
    };
    const struct {
        Instant edge;
        const char* mine;
        const char* theirs;
        const char* before;
        const char* after;
    } edges[] = {
        {at(2026, 3, 8, 7), "Europe/Berlin", "America/New_York", "6 hours behind", "5 hours behind"},
        {at(2026, 3, 29, 1), "Europe/Berlin", "America/New_York", "5 hours behind", "6 hours behind"},
        {at(2026, 10, 25, 1), "Europe/Berlin", "America/New_York", "6 hours behind", "5 hours behind"},
        {at(2026, 11, 1, 6), "Europe/Berlin", "America/New_York", "5 hours behind", "6 hours behind"},
        {at(2027, 3, 14, 7), "America/New_York", "Europe/Berlin", "6 hours ahead", "5 hours ahead"},
        {at(2027, 3, 28, 1), "America/New_York", "Europe/Berlin", "5 hours ahead", "6 hours ahead"},
        {at(2026, 4, 4, 15), "Europe/Berlin", "Australia/Lord_Howe", "9 hours ahead", "8.5 hours ahead"},
        {at(2026, 10, 3, 15, 30), "Europe/Berlin", "Australia/Lord_Howe", "8.5 hours ahead", "9 hours ahead"},
        {at(2027, 4, 3, 15), "Asia/Kathmandu", "Australia/Lord_Howe", "5.25 hours ahead", "4.75 hours ahead"},
        {at(2026, 11, 1, 6), "America/New_York", "Asia/Kathmandu", "9.75 hours ahead", "10.75 hours ahead"},
        {at(2027, 10, 31, 1), "Asia/Kathmandu", "Europe/Berlin", "3.75 hours behind", "4.75 hours behind"},
    };
    for (const auto& [edge, mine, theirs, before, after] : edges) {
        zone = QTimeZone{mine};
        partnerIsIn(theirs, edge);
        now = edge - 1s;
        EXPECT_EQ(clocks().between, before) << mine << ' ' << theirs;
        now = edge;
        EXPECT_EQ(clocks().between, after) << mine << ' ' << theirs;
    }
    // The hour that New York lives through twice.
    partnerIsIn("America/New_York", now);
    for (const auto& [instant, time] :
         {std::pair{at(2026, 11, 1, 5, 30), "01:30"}, {at(2026, 11, 1, 6, 30), "01:30"}}) {
        now = instant;
        EXPECT_EQ(clocks().theirs.time, time);
    }
}

TEST_F(PlaceCardsTest, theClocksNameAnotherDayAndKnowDayFromNight) {
    partnerIsIn("Pacific/Auckland", now);
    EXPECT_EQ(clocks().day, "tomorrow"); // 16:13 here, 02:13 there
    partnerIsIn("Asia/Kolkata", now);
    EXPECT_EQ(clocks().day, "");
    now -= 15h;
    partnerIsIn("America/New_York", now);
    EXPECT_EQ(clocks().day, "yesterday"); // 01:13 here, 19:13 there
    const auto card = item(TimezonesPayload{});
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()),
              "clocks, you, 01:13, bo, 19:13, 17°, 6 hours behind, yesterday, from bo, pinned today");
    // In the north of the north the sun is up at midnight; where no place is known, the hour tells.
    now = Instant{std::chrono::sys_days{std::chrono::year{2026} / 6 / 21} + 22h};
    partnerIsIn("Europe/Oslo", now);
    partner.here->lat = 69.65;
    partner.here->lon = 18.96;
    EXPECT_GT(clocks().theirs.view->sunAltitude, 0);
    EXPECT_LT(clocks().mine.view->sunAltitude, 0);
}

TEST_F(PlaceCardsTest, aWindowReadsWhatItShows) {
    partnerIsIn("Europe/Lisbon", now - 2h);
    const auto card = item(LocationPayload{PartnerID::b});
    const auto read = [&] { return spoken(card, faceOf(card, live()), live()); };
    EXPECT_EQ(
        read(),
        "bo's window, alfama, 15:13, 17°, storm, daylight, as of 13:13, weather as of 13:13, from bo, pinned today");
    partnerIsIn("Europe/Lisbon", now += 6h);
    partner.here->weather->code = 0;
    EXPECT_EQ(read(), "bo's window, alfama, 21:13, 17°, night, waxing moon, from bo, pinned today");
}

TEST_F(PlaceCardsTest, aCityThatThePageDrewHangsInThePartnersWindowAlone) {
    const LiveContext::Picture drawn = [](const UUID&, Size) {
        return ItemPicture{QImage{4, 4, QImage::Format_RGB32}};
    };
    picture = &drawn;
    partnerIsIn("Europe/Lisbon", now);
    own.here = partner.here;
    EXPECT_TRUE(face<WindowFace>(LocationPayload{PartnerID::b}).city.isNull());
    city.city = UUID{};
    EXPECT_FALSE(face<WindowFace>(LocationPayload{PartnerID::b}).city.isNull());
    EXPECT_TRUE(face<WindowFace>(LocationPayload{PartnerID::a}).city.isNull());
    partner.here.reset();
    EXPECT_TRUE(face<WindowFace>(LocationPayload{PartnerID::b}).city.isNull());
}

} // namespace
} // namespace lumaro
