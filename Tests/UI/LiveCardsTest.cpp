// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveCards.h"
#include "Lumaro/UI/Board/CardFaces.h"
#include "Lumaro/UI/Board/PlaceWords.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "Lumaro/UI/Board/WhoseWords.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Presence/Pomodoro.h"

#include <QtCore/QTimeZone>
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

const LiveContext::Picture noPicture = [](const UUID&, Size) { return ItemPicture{}; };

struct LiveCardsTest : testing::Test {
    // 2026-09-21 14:13:20 UTC
    Instant now{1'790'000'000s};
    BoardPresence partner;
    ClientMessage::Presence own;
    MusicState music{.musicConsent = Consent::yes};
    PlaceState place;
    CoverState covers;
    CityState city;
    const LiveContext::Picture* picture = &noPicture;
    std::map<PartnerID, std::string> names{{PartnerID::a, "ana"}, {PartnerID::b, "bo"}};
    QTimeZone zone{QByteArray{"Europe/Berlin"}};

    LiveContext live() const {
        return {.partner = partner,
                .own = own,
                .names = names,
                .me = PartnerID::a,
                .now = now,
                .zone = zone,
                .music = music,
                .place = place,
                .covers = covers,
                .city = city,
                .picture = *picture};
    }
    BoardItem item(Payload payload) const {
        BoardItem made;
        made.author = PartnerID::b;
        made.createdAt = now - 1h;
        made.payload = std::move(payload);
        return made;
    }
    template <class Face>
    Face face(Payload payload) const {
        return *faceOf(item(std::move(payload)), live()).as<Face>();
    }
    void partnerPlays(std::int64_t progressMs, std::int64_t durationMs) {
        partner.nowPlaying = NowPlaying{.isPlaying = true,
                                        .progressMs = progressMs,
                                        .sampledAt = now,
                                        .durationMs = durationMs,
                                        .title = "harbour lights",
                                        .artist = "the paper boats",
                                        .artworkURL = std::nullopt};
        partner.nowPlayingHeardAt = now;
    }
    WindowFace window() const { return face<WindowFace>(LocationPayload{PartnerID::b}); }
    ClocksFace clocks() const { return face<ClocksFace>(TimezonesPayload{}); }
    MusicFace record(PartnerID slot = PartnerID::b) const { return face<MusicFace>(NowPlayingSlotPayload{slot}); }
    std::optional<Instant> recordChanges() const {
        return nextChange(item(NowPlayingSlotPayload{PartnerID::b}), live());
    }
    void partnerIsIn(const char* zoneName, Instant sampledAt) {
        Weather weather;
        weather.tempC = 16.6;
        weather.code = 95;
        weather.isDay = false;
        weather.sampledAt = sampledAt;
        Here here;
        here.lat = 38.71;
        here.lon = -9.14;
        here.label = "alfama";
        here.tz = zoneName;
        here.sampledAt = sampledAt;
        here.weather = weather;
        partner.here = here;
    }
};

TEST_F(LiveCardsTest, theClocksTellSharedHoursAndThoseOfAPlaceFirst) {
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

TEST_F(LiveCardsTest, anItemTellsWhoseItIsAndSinceWhen) {
    auto one = item(NotePayload{});
    const auto told = [&](Instant createdAt) {
        one.createdAt = createdAt;
        return whoseAndWhen(one, live());
    };
    EXPECT_EQ(told(now), "bo, 16:13");
    EXPECT_EQ(told(now - 8h), "bo, 8:13");
    EXPECT_EQ(told(now - 24h), "bo, sunday 16:13");
    EXPECT_EQ(told(now - 24h * 7), "bo, 14 september");
    EXPECT_EQ(told(now - 24h * 365), "bo, 21 september 2025");
    EXPECT_EQ(told(now + 24h), "bo, 22 september") << "by a clock that is ahead";
    names.clear();
    EXPECT_EQ(told(now), "they, 16:13");
    one.author = PartnerID::a;
    EXPECT_EQ(told(now), "you, 16:13");
    partner.seen = now;
    EXPECT_EQ(told(now), "you, 16:13 · seen");
    EXPECT_EQ(told(now + 1s), "you, 16:13");
}

TEST_F(LiveCardsTest, whatIsMissingOnThePartnersCardsIsToldWithWhatTheyCanDo) {
    const auto isTold = [&](Payload payload) {
        const auto card = item(std::move(payload));
        return std::pair{!whatTheyCanDo(card, live()).isEmpty(), !questionToThem(card, live()).isEmpty()};
    };
    const std::pair both{true, true};
    const std::pair none{false, false};
    EXPECT_EQ(isTold(TimezonesPayload{}), both);
    EXPECT_EQ(isTold(LocationPayload{PartnerID::b}), both);
    EXPECT_EQ(isTold(NowPlayingSlotPayload{PartnerID::b}), both);
    EXPECT_EQ(isTold(CalendarPayload{PartnerID::b}), std::pair(true, false));
    for (const auto& own : {Payload{LocationPayload{PartnerID::a}}, Payload{NowPlayingSlotPayload{PartnerID::a}},
                            Payload{NotePayload{}}}) {
        EXPECT_EQ(isTold(own), none);
    }
    partnerIsIn("Europe/Lisbon", now);
    partnerPlays(0, 1000);
    partner.calendarStatus[PartnerID::b] = CalendarStatus::connected;
    for (const auto& full : {Payload{TimezonesPayload{}}, Payload{LocationPayload{PartnerID::b}},
                             Payload{NowPlayingSlotPayload{PartnerID::b}}, Payload{CalendarPayload{PartnerID::b}}}) {
        EXPECT_EQ(isTold(full), none);
    }
}

TEST_F(LiveCardsTest, cardsSayWhatTheyDoNotKnow) {
    EXPECT_EQ(face<MusicFace>(NowPlayingSlotPayload{PartnerID::b}).words, "nothing playing");
    EXPECT_EQ(face<WindowFace>(LocationPayload{PartnerID::a}).words, "let it see where you are");
    EXPECT_EQ(face<DayFace>(CalendarPayload{PartnerID::a}).words, "no calendar yet");
    partner.isPartnerOnline = true;
    EXPECT_EQ(face<WindowFace>(LocationPayload{PartnerID::b}).words, "waiting for a fix");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).theirs.words, "hours not shared");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).mine.time, "16:13");
}

TEST_F(LiveCardsTest, onesOwnWindowSaysWhatKeepsItEmptyAndSinceWhen) {
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

TEST_F(LiveCardsTest, aPlaceOfAStrangersNumbersIsToldInSomeWords) {
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

TEST_F(LiveCardsTest, aPlaceIsToldWithItsTimeWeatherAndAge) {
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

TEST_F(LiveCardsTest, oldWeatherSaysHowOldAndFreshNothing) {
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

TEST_F(LiveCardsTest, theWindowShowsTheSunTheMoonAndTheWeatherOfThePlace) {
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

TEST_F(LiveCardsTest, snowLiesOnRoofsWhereItSnowsAndSettlesInFrost) {
    partnerIsIn("Europe/Lisbon", now);
    partner.here->weather->code = 73;
    EXPECT_LT(window().view->snowOnRoofs, 1);
    partner.here->weather->tempC = -3;
    EXPECT_EQ(window().view->snowOnRoofs, 1);
    partner.here->weather->code = 0;
    EXPECT_EQ(window().view->snowOnRoofs, 0);
}

TEST_F(LiveCardsTest, weatherAndPlacesOfAStrangersDeviceMakeSomeView) {
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
TEST_F(LiveCardsTest, theHoursBetweenAreRightOnBothSidesOfEveryEdge) {
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

TEST_F(LiveCardsTest, theClocksNameAnotherDayAndKnowDayFromNight) {
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

TEST_F(LiveCardsTest, aWindowReadsWhatItShows) {
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

TEST_F(LiveCardsTest, aCityThatThePageDrewHangsInThePartnersWindowAlone) {
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

TEST_F(LiveCardsTest, aDayIsThePersonsOwnAndYesterdaysIsNotShown) {
    partnerIsIn("Pacific/Auckland", now);
    partner.calendarStatus[PartnerID::b] = CalendarStatus::connected;
    CalendarDay day{.date = "2026-09-22", .events = {}, .fetchedAt = now};
    for (int i = 0; i < 6; ++i) day.events.push_back({"event", now + i * 1h, now + i * 1h, i == 0});
    partner.calendar[PartnerID::b] = day;
    const auto shown = face<DayFace>(CalendarPayload{PartnerID::b});
    EXPECT_EQ(shown.day, "22");
    EXPECT_EQ(shown.weekday, "tuesday");
    ASSERT_EQ(shown.events.size(), 4U);
    EXPECT_EQ(shown.events.front().time, "all day");
    EXPECT_EQ(shown.more, 2);
    partner.calendar[PartnerID::b].date = "2026-09-21";
    EXPECT_EQ(face<DayFace>(CalendarPayload{PartnerID::b}).words, "the day is on its way");
}

TEST_F(LiveCardsTest, whatChangesByItselfSaysWhenAndThenLooksDifferent) {
    PomodoroPayload block;
    block.phase = PomodoroPhase::block;
    block.startedAt = now - 10min - 300ms;
    block.startedBy = PartnerID::b;
    partnerPlays(61'250, 214'000);
    const Payload cards[] = {NotePayload{pm::emptyDoc(), "butter", "brass", now + 5h + 7s},
                             CountdownPayload{now + 49h, "x"},
                             CountdownPayload{now + 61min, "x"},
                             CountdownPayload{now + 90s, "x"},
                             block,
                             NowPlayingSlotPayload{PartnerID::b},
                             TimezonesPayload{}};
    for (const auto& card : cards) {
        auto before = item(card);
        const auto change = nextChange(before, live());
        ASSERT_TRUE(change && *change > now) << card.value().index();
        const auto looks = faceOf(before, live());
        const auto wasNow = now;
        now = *change - 1ms;
        EXPECT_EQ(faceOf(before, live()), looks) << "changes before it says, kind " << card.value().index();
        now = *change;
        EXPECT_FALSE(faceOf(before, live()) == looks)
            << "looks the same after its change, kind " << card.value().index();
        now = wasNow;
    }
    EXPECT_EQ(nextChange(item(NotePayload{pm::emptyDoc(), "butter", "brass", std::nullopt}), live()), std::nullopt);
}

TEST_F(LiveCardsTest, aCountdownCelebratesWhatCameWhileItHung) {
    const auto celebrates = [&](std::chrono::minutes hung, std::chrono::minutes came) {
        auto chip = item(CountdownPayload{now + came, "x"});
        chip.updatedAt = now + hung;
        return faceOf(chip, live()).as<CountdownFace>()->isCelebrated;
    };
    EXPECT_TRUE(celebrates(-60min, 0min));
    EXPECT_TRUE(celebrates(-60min, -30min));
    EXPECT_FALSE(celebrates(-60min, 1min)) << "not yet";
    EXPECT_FALSE(celebrates(-30min, -60min)) << "hung up, or changed, for a day that had been";
}

TEST_F(LiveCardsTest, countsAndNamesThatAreNotKnownReadAsPeopleSayThem) {
    const std::vector<std::pair<std::chrono::minutes, const char*>> countdowns{
        {72h, "days"}, {1h + 30min, "hours"}, {30min, "minutes"}, {1min, "minute"}};
    for (const auto& [left, unit] : countdowns) {
        EXPECT_EQ(face<CountdownFace>(CountdownPayload{now + left, "x"}).unit, unit) << left.count();
    }
    const std::vector<std::pair<const char*, const char*>> zones{{"Europe/Lisbon", "1 hour behind"},
                                                                 {"Asia/Tokyo", "7 hours ahead"},
                                                                 {"Asia/Kolkata", "3.5 hours ahead"},
                                                                 {"Europe/Rome", "the same time"}};
    for (const auto& [zoneName, between] : zones) {
        partnerIsIn(zoneName, now);
        EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).between, between);
    }
    EXPECT_EQ(face<DayFace>(CalendarPayload{PartnerID::b}).whose, "bo's day");
    names.clear();
    EXPECT_EQ(face<DayFace>(CalendarPayload{PartnerID::b}).whose, "their day");
}

TEST_F(LiveCardsTest, theArmComesInWithTheTrackAndRestsWhereItIsNotKnown) {
    partnerPlays(0, 64'000);
    EXPECT_EQ(record().armStep, 0);
    now += 32s;
    EXPECT_EQ(record().armStep, 32);
    now += 40s;
    EXPECT_EQ(record().armStep, MusicFace::armSteps);
    partner.nowPlaying->isPlaying = false;
    EXPECT_EQ(record().armStep, 0);
    EXPECT_EQ(recordChanges(), std::nullopt);
    partnerPlays(70'000, 0);
    EXPECT_LT(record().armStep, MusicFace::armSteps / 3);
    EXPECT_GT(record().armStep, 0);
    EXPECT_EQ(recordChanges(), std::nullopt);
}

TEST_F(LiveCardsTest, aTrackIsOverItsLengthAndAMinuteAfterTheLastNews) {
    const auto heardAt = now;
    partnerPlays(60'000, 64'000);
    now += 10s;
    EXPECT_EQ(recordChanges(), heardAt + 124s);
    now = heardAt + 124s - 1ms;
    EXPECT_EQ(record().state, MusicFace::State::playing);
    now = heardAt + 124s;
    EXPECT_EQ(record().words, "nothing playing");
    EXPECT_EQ(recordChanges(), std::nullopt);
    own.nowPlaying = partner.nowPlaying;
    EXPECT_EQ(record(PartnerID::a).words, "nothing playing");
    own.nowPlaying->sampledAt = now;
    EXPECT_EQ(record(PartnerID::a).state, MusicFace::State::playing);
}

TEST_F(LiveCardsTest, numbersOfAStrangersDeviceAreShownAsSomeNumber) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    for (const auto progress : {least, std::int64_t{-1}, std::int64_t{1}, most}) {
        for (const auto duration : {least, std::int64_t{0}, std::int64_t{1}, most}) {
            for (const auto sampledAt : {Instant::min(), now, Instant::max()}) {
                partnerPlays(progress, duration);
                partner.nowPlaying->sampledAt = sampledAt;
                EXPECT_GE(record().armStep, 0);
                EXPECT_LE(record().armStep, MusicFace::armSteps);
                EXPECT_GT(recordChanges().value_or(Instant::max()), now);
                EXPECT_LT(trackWords({PartnerID::b}, live()).position.size(), 32);
            }
        }
    }
}

TEST_F(LiveCardsTest, ownMusicIsOfferedToBeSharedUntilItIsAndEachCardHasItsPersonsCover) {
    music.musicConsent = Consent::notAsked;
    EXPECT_EQ(record(PartnerID::a).words, "share what i'm listening to");
    EXPECT_EQ(record(PartnerID::b).words, "nothing playing");
    music.musicConsent = Consent::yes;
    EXPECT_EQ(record(PartnerID::a).words, "nothing playing");
    partnerPlays(0, 64'000);
    own.nowPlaying = partner.nowPlaying;
    UUID asked;
    const LiveContext::Picture ask = [&](const UUID& id, Size) {
        asked = id;
        return ItemPicture{QImage{1, 1, QImage::Format_RGB32}};
    };
    picture = &ask;
    EXPECT_TRUE(record(PartnerID::b).cover.isNull());
    covers.ownCover = UUID::parse("00000000-0000-4000-8000-00000000000a");
    covers.partnerCover = UUID::parse("00000000-0000-4000-8000-00000000000b");
    for (const auto& [slot, cover] : {std::pair{PartnerID::a, covers.ownCover}, {PartnerID::b, covers.partnerCover}}) {
        EXPECT_FALSE(record(slot).cover.isNull());
        EXPECT_EQ(asked, cover);
    }
}

TEST_F(LiveCardsTest, namesFromAPlayerAreOnOneLineAndCutBeforeFontsSeeThem) {
    partnerPlays(0, 64'000);
    partner.nowPlaying->title = "a\n\tb";
    partner.nowPlaying->artist = std::string(10'000, 'x');
    EXPECT_EQ(record().title, "a b");
    EXPECT_EQ(record().artist, QString(200, QLatin1Char{'x'}) + QStringLiteral("…"));
    partner.nowPlaying->title = "e";
    for (int i = 0; i < 5'000; ++i) partner.nowPlaying->title += "\u0301";
    EXPECT_LE(record().title.size(), 801);
}

TEST_F(LiveCardsTest, aTrackIsToldInFullAndSpoken) {
    const auto card = item(NowPlayingSlotPayload{PartnerID::b});
    EXPECT_FALSE(trackWords({PartnerID::b}, live()).isThere);
    partnerPlays(83'900, 225'000);
    EXPECT_EQ(trackWords({PartnerID::b}, live()).position, "1:23 of 3:45");
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()),
              "bo's music, 'harbour lights', the paper boats, playing, from bo, pinned today");
    partner.nowPlaying->isPlaying = false;
    partner.nowPlaying->durationMs = 0;
    partner.nowPlaying->progressMs = 3'723'000;
    EXPECT_EQ(trackWords({PartnerID::b}, live()).position, "1:02:03 · paused");
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()),
              "bo's music, 'harbour lights', the paper boats, paused, from bo, pinned today");
    const auto mine = item(NowPlayingSlotPayload{PartnerID::a});
    EXPECT_EQ(spoken(mine, faceOf(mine, live()), live()), "your music, nothing playing, from bo, pinned today");
}

TEST_F(LiveCardsTest, itemsReadAsASentence) {
    const auto note = item(NotePayload{pm::docOfLines("buy\noranges"), "butter", "brass", now + 1h});
    EXPECT_EQ(spoken(note, faceOf(note, live()), live()), "note from bo, pinned today, 'buy oranges'");
    auto moved = note;
    moved.setAuthor(PartnerID::a);
    EXPECT_EQ(spoken(moved, faceOf(moved, live()), live()), spoken(note, faceOf(note, live()), live()))
        << "whoever moved it, it is bo's";
    auto old = item(PhotoPayload{.mediaId = {}, .caption = "the lake", .takenAt = {}, .aspect = {}});
    old.author = PartnerID::a;
    old.isLocked = true;
    old.createdAt = now - std::chrono::days{1};
    EXPECT_EQ(spoken(old, faceOf(old, live()), live()),
              "photo from you, pinned yesterday, 'the lake', on its way…, locked");
}

} // namespace
} // namespace lumaro
