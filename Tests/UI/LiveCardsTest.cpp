// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveCards.h"
#include "Lumaro/UI/Board/CardFaces.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Presence/Pomodoro.h"

#include <QtCore/QTimeZone>
#include <gtest/gtest.h>

#include <chrono>
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
    MusicFace record(PartnerID slot = PartnerID::b) const { return face<MusicFace>(NowPlayingSlotPayload{slot}); }
    std::optional<Instant> recordChanges() const {
        return nextChange(item(NowPlayingSlotPayload{PartnerID::b}), live());
    }
    void partnerIsIn(const char* zoneName, Instant sampledAt) {
        Weather weather;
        weather.tempC = 16.6;
        weather.code = 95;
        weather.isDay = false;
        Here here;
        here.label = "alfama";
        here.tz = zoneName;
        here.sampledAt = sampledAt;
        here.weather = weather;
        partner.here = here;
    }
};

TEST_F(LiveCardsTest, cardsSayWhatTheyDoNotKnow) {
    EXPECT_EQ(face<MusicFace>(NowPlayingSlotPayload{PartnerID::b}).words, "nothing playing");
    EXPECT_EQ(face<WindowFace>(LocationPayload{PartnerID::a}).words, "location is off");
    EXPECT_EQ(face<DayFace>(CalendarPayload{PartnerID::a}).words, "no calendar yet");
    partner.isPartnerOnline = true;
    EXPECT_EQ(face<WindowFace>(LocationPayload{PartnerID::b}).words, "waiting for a fix");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).theirs.words, "waiting for a fix");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).mine.time, "16:13");
}

TEST_F(LiveCardsTest, aPlaceIsToldWithItsTimeWeatherAndAge) {
    partnerIsIn("Asia/Kolkata", now - 2h);
    const auto window = face<WindowFace>(LocationPayload{PartnerID::b});
    EXPECT_EQ(window.place, "alfama");
    EXPECT_EQ(window.time, "19:43");
    EXPECT_EQ(window.temperature, "17°");
    EXPECT_EQ(window.sky, Sky::storm);
    EXPECT_EQ(window.words, "as of 17:43");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{}).between, "3.5 hours ahead");
    EXPECT_EQ(face<ClocksFace>(TimezonesPayload{.units = TemperatureUnit::fahrenheit}).theirs.words, "62°");
    partnerIsIn("no/such zone", now);
    EXPECT_EQ(face<WindowFace>(LocationPayload{PartnerID::b}).time, "");
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
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()), "bo's music, 'harbour lights', the paper boats, playing");
    partner.nowPlaying->isPlaying = false;
    partner.nowPlaying->durationMs = 0;
    partner.nowPlaying->progressMs = 3'723'000;
    EXPECT_EQ(trackWords({PartnerID::b}, live()).position, "1:02:03 · paused");
    EXPECT_EQ(spoken(card, faceOf(card, live()), live()), "bo's music, 'harbour lights', the paper boats, paused");
    const auto mine = item(NowPlayingSlotPayload{PartnerID::a});
    EXPECT_EQ(spoken(mine, faceOf(mine, live()), live()), "your music, nothing playing");
}

TEST_F(LiveCardsTest, itemsReadAsASentence) {
    const auto note = item(NotePayload{pm::docOfLines("buy\noranges"), "butter", "brass", now + 1h});
    EXPECT_EQ(spoken(note, faceOf(note, live()), live()), "note from bo, pinned today, 'buy oranges'");
    auto old = item(PhotoPayload{.mediaId = {}, .caption = "the lake", .takenAt = {}, .aspect = {}});
    old.author = PartnerID::a;
    old.createdAt = now - std::chrono::days{1};
    EXPECT_EQ(spoken(old, faceOf(old, live()), live()), "photo from you, pinned yesterday, 'the lake', on its way…");
}

} // namespace
} // namespace lumaro
