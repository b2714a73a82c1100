// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "Lumaro/UI/Board/WhoseWords.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "Tests/UI/LiveCardsFixture.h"

#include <limits>

namespace lumaro {
namespace {

using LiveCardsTest = LiveCardsFixture;

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
    for (const auto& ours : {Payload{LocationPayload{PartnerID::a}}, Payload{NowPlayingSlotPayload{PartnerID::a}},
                             Payload{NotePayload{}}}) {
        EXPECT_EQ(isTold(ours), none);
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

TEST_F(LiveCardsTest, itemsReadAsASentence) {
    const auto note = item(NotePayload{pm::docOfLines("buy\noranges"), "butter", "brass", now + 1h});
    auto moved = note;
    moved.setAuthor(PartnerID::a);
    EXPECT_EQ(spoken(moved, faceOf(moved, live()), live()), spoken(note, faceOf(note, live()), live()))
        << "whoever moved it, it is bo's";
    const auto said = spoken(note, faceOf(note, live()), live()).toStdString();
    EXPECT_TRUE(said.starts_with("note from bo, pinned today, 'buy oranges', comes down ")) << said;
    const Instant noon{std::chrono::seconds{1'790'000'000}}; // 14:13 in UTC
    EXPECT_EQ(comesDown(noon + 1h, noon, QTimeZone::utc()).toStdString(), "comes down today at 15:13");
    EXPECT_EQ(comesDown(noon + 24h, noon, QTimeZone::utc()).toStdString(), "comes down tomorrow at 14:13");
    auto old = item(PhotoPayload{.mediaId = {}, .caption = "the lake", .takenAt = {}, .aspect = {}});
    old.author = PartnerID::a;
    old.isLocked = true;
    old.createdAt = now - std::chrono::days{1};
    EXPECT_EQ(spoken(old, faceOf(old, live()), live()),
              "photo from you, pinned yesterday, 'the lake', on its way…, locked");
}

} // namespace
} // namespace lumaro
