// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/AppFixture.h"

#include "Lumaro/Model/Board/BoardNews.h"
#include "LumaroCore/Presence/Pomodoro.h"

#include <gtest/gtest.h>

#include <string>

namespace lumaro {
namespace {

BoardItem itemWith(const UUID& id, Payload payload) {
    BoardItem item;
    item.id = id;
    item.payload = std::move(payload);
    return item;
}

class AppRoomTest : public testing::Test, protected AppFixture {
protected:
    void SetUp() override { goOnBoard(); }
};

TEST_F(AppRoomTest, AnActIsShownStoredAndOnlyThenConfirmed) {
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    EXPECT_EQ(state().board.items.size(), 1U);
    EXPECT_EQ(rooms.sent.size(), 1U);
    EXPECT_EQ(state().pendingBatches, 1U);
    rooms.say(ServerMessage::Welcome{});
    EXPECT_EQ(state().board.items.size(), 1U) << "what waits stays on screen";
}

TEST_F(AppRoomTest, AnActThatCannotBeStoredGoesAndIsTold) {
    rooms.stores = false;
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    EXPECT_TRUE(app->board().items.empty());
    EXPECT_EQ(state().notice, textOf(ActFault::notStored));
}

TEST_F(AppRoomTest, AnActThatTheBoardRefusesIsNotSent) {
    for (std::size_t i = 0; i < BoardSpec::maxLiveItems; ++i) relay(noteOps("n", PartnerID::b));
    EXPECT_EQ(app->liveBoard().act(noteOps("one more", PartnerID::a)).error(), ActFault::windowFull);
    EXPECT_EQ(rooms.sent.size(), 0U);
}

TEST_F(AppRoomTest, ArrivalsGlowUntilTwoSecondsAfterTheLast) {
    relay(noteOps("one", PartnerID::b));
    pass(Seconds{1.5});
    relay(noteOps("two", PartnerID::b));
    pass(Seconds{1.5});
    EXPECT_EQ(state().arriving.size(), 2U);
    pass(Seconds{0.5});
    EXPECT_TRUE(state().arriving.empty());
}

TEST_F(AppRoomTest, ThePartnersItemsAreToldAndOnesOwnAreNot) {
    relay(noteOps("buy oranges", PartnerID::b));
    relay(noteOps("from my other computer", PartnerID::a), PartnerID::a);
    auto two = noteOps("x", PartnerID::b);
    std::ranges::copy(noteOps("y", PartnerID::b), std::back_inserter(two));
    app->setLooking(true); // has seen the first
    relay(std::move(two));
    EXPECT_EQ(notifications.posted, (std::vector<LocalNotification>{{"Ben", "buy oranges", {}, "items"},
                                                                    {"Ben", "Ben sent 2 things", {}, "items"}}));
    EXPECT_EQ(app->board().items.size(), 4U);
}

TEST_F(AppRoomTest, EveryKindHasItsWords) {
    const UUID sticker = ids.next();
    const UUID window = ids.next();
    Board board;
    board.items.push_back(itemWith(sticker, StickerPayload{}));
    board.items.push_back(itemWith(window, LocationPayload{}));
    const std::vector<std::pair<Payload, std::string>> cases{
        {PhotoPayload{}, "a photo"},
        {NotePayload{pm::docOfLines("  "), "butter", "brass", {}}, "a note"},
        {NotePayload{pm::docOfLines("hi\nyou"), "butter", "brass", {}}, "hi\nyou"},
        {LocationPayload{}, "put up our windows"},
        {TimezonesPayload{}, "put up the clocks"},
        {PomodoroPayload{}, "put up the block card"},
        {CalendarPayload{}, "put up the day page"},
        {StickerPayload{}, "stuck a sticker on the window"},
        {DoodlePayload{}, "drew on the board"},
        {DoodlePayload{.width = 1, .height = 1, .strokes = {}, .on = sticker}, "drew on a sticker"},
        {DoodlePayload{.width = 1, .height = 1, .strokes = {}, .on = window}, "drew on the window"},
        {CountdownPayload{}, "Ben pinned something up"},
    };
    for (const auto& [payload, words] : cases) {
        const BoardItem item = itemWith(ids.next(), payload);
        const BoardItem* const items[] = {&item};
        EXPECT_EQ(newsOf(items, board, "Ben").body, words);
    }
}

TEST_F(AppRoomTest, WhatLeavesFallsForAMoment) {
    const auto ops = noteOps("soon gone", PartnerID::b);
    relay(ops);
    const auto id = app->board().items.front().id;
    clock.shift(std::chrono::seconds{1});
    relay(*Edits::takeDown(app->board(), id, {PartnerID::b, clock.now()}));
    EXPECT_TRUE(app->board().items.empty());
    EXPECT_EQ(state().falling, std::set{id});
    EXPECT_EQ(state().board.items.size(), 1U) << "it is still drawn";
    pass(Seconds{0.85});
    EXPECT_TRUE(state().falling.empty());
    EXPECT_TRUE(state().board.items.empty());
}

TEST_F(AppRoomTest, AnExpiredNoteComesDownAfterItsPause) {
    const auto expiry = clock.now() + std::chrono::seconds{60};
    relay(noteOps("for a minute", PartnerID::b, expiry));
    pass(Seconds{60});
    EXPECT_EQ(rooms.sent.size(), 0U);
    pass(Seconds{0.25});
    EXPECT_EQ(rooms.sent.size(), 1U);
    EXPECT_TRUE(app->board().items.empty());
}

TEST_F(AppRoomTest, ANoteThatExpiredWhileTheMachineSleptComesDownOnWaking) {
    relay(noteOps("for a minute", PartnerID::b, clock.now() + std::chrono::seconds{60}));
    clock.shift(std::chrono::hours{8});
    signals.wakeUp();
    pass(Seconds{0.25});
    EXPECT_TRUE(app->board().items.empty());
    EXPECT_EQ(rooms.retries, 1);
}

TEST_F(AppRoomTest, ABlockRingsOnceForThoseInIt) {
    for (const auto by : {PartnerID::a, PartnerID::b}) {
        AppFixture one;
        one.goOnBoard();
        auto timer = Pomodoro::started({}, 25, by, one.clock.now());
        one.relay(*Edits::putUp(one.app->board(), one.ids.next(), timer, std::nullopt, {by, one.clock.now()}));
        one.pass(Seconds{25 * 60 - 1});
        EXPECT_TRUE(one.sounds.played.empty());
        one.pass(Seconds{1});
        one.relay(one.noteOps("later", PartnerID::b));
        one.pass(Seconds{3600});
        EXPECT_EQ(one.sounds.played.size(), by == PartnerID::a ? 1U : 0U) << nameOf(by);
    }
}

TEST_F(AppRoomTest, ABlockEndsInSilenceForWhoWantsNoSounds) {
    defaults.setBoolean("playsSounds", false);
    auto timer = Pomodoro::started({}, 25, PartnerID::a, clock.now());
    relay(*Edits::putUp(app->board(), ids.next(), timer, std::nullopt, {PartnerID::a, clock.now()}));
    pass(Seconds{25 * 60});
    EXPECT_TRUE(state().lastBlockRang.has_value());
    EXPECT_TRUE(sounds.played.empty());
}

TEST_F(AppRoomTest, TenPresencesInAQuarterOfASecondAreOne) {
    pass(Seconds{1});
    rooms.presences.clear();
    for (int i = 0; i < 10; ++i) {
        app->presence().setActivity(i % 2 == 0 ? Activity::editing : Activity::idle);
        pass(Seconds{0.02});
    }
    pass(Seconds{0.25});
    ASSERT_EQ(rooms.presences.size(), 1U);
    EXPECT_EQ(rooms.presences.front().activity, Activity::idle);
}

TEST_F(AppRoomTest, P41_PresenceFollowsEveryWelcome) {
    app->presence().setActivity(Activity::editing);
    pass(Seconds{0.25});
    for (int welcomes = 0; welcomes < 2; ++welcomes) {
        rooms.presences.clear();
        rooms.say(ServerMessage::Welcome{});
        pass(Seconds{0.25});
        ASSERT_EQ(rooms.presences.size(), 1U);
        EXPECT_EQ(rooms.presences.front().activity, Activity::editing);
    }
}

TEST_F(AppRoomTest, ANewsIsToldOncePerMessageAndSaysWhatChanged) {
    std::vector<AppNews> told;
    app->onNews([&](const AppNews& news) { told.push_back(news); });
    rooms.say(ServerMessage::Roster{{.a = true, .b = false}, {}});
    EXPECT_EQ(told.size(), 1U);
    told.clear();
    rooms.say(ServerMessage::Roster{{.a = true, .b = false}, {}});
    EXPECT_TRUE(told.empty()) << "nothing is different";
    rooms.say(ServerMessage::Roster{PartnerSet::both(), {}});
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told.front().changed.has(AppChange::partner));
    EXPECT_FALSE(told.front().changed.has(AppChange::board));

    told.clear();
    relay(noteOps("hello", PartnerID::b));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_TRUE(told.front().changed.has(AppChange::board));
    EXPECT_EQ(state().arriving.size(), 1U);

    told.clear();
    const auto id = app->board().items.front().id;
    ASSERT_TRUE(app->editor().carryOut({BoardVerb::Move{id, {300, 300}}}));
    ASSERT_EQ(told.size(), 1U) << "an act of the editor is one piece of news";
    EXPECT_TRUE(told.front().changed.has(AppChange::board));
    EXPECT_TRUE(told.front().changed.has(AppChange::editor));

    told.clear();
    rooms.stores = false;
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told.front().notices, std::vector<std::string>{std::string{textOf(ActFault::notStored)}});
    EXPECT_EQ(state().failedBatches.size(), 1U);
    app->onNews(nullptr);
}

TEST_F(AppRoomTest, WhatAListenerDoesIsToldAfterwards) {
    std::vector<std::string> story;
    app->onNews([&](const AppNews& news) {
        story.push_back("begins");
        if (news.quickNotes.size() == 1) app->desktop().set(false);
        if (news.changed.has(AppChange::desktop)) story.push_back("desktop");
        story.push_back("ends");
    });
    app->requestQuickNote("hi");
    EXPECT_EQ(story, (std::vector<std::string>{"begins", "ends", "begins", "desktop", "ends"}));
    app->onNews(nullptr);
}

TEST_F(AppRoomTest, WhoeverHasSomethingInTheHandIsSeenEditing) {
    relay(noteOps("hello", PartnerID::b));
    const auto id = app->board().items.front().id;
    ASSERT_TRUE(app->editor().inHand().beginGesture(id));
    pass(Seconds{0.3});
    EXPECT_EQ(rooms.presences.back().activity, Activity::editing);
    ASSERT_TRUE(app->editor().inHand().endGesture());
    EXPECT_TRUE(app->editor().pen().begin(std::nullopt));
    EXPECT_EQ(state().ownPresence.activity, Activity::editing);
    app->editor().pen().cancel();
    pass(Seconds{0.3});
    EXPECT_EQ(rooms.presences.back().activity, Activity::idle);
}

TEST_F(AppRoomTest, APlaceThatIsFreeHasNobodysName) {
    rooms.say(ServerMessage::Roster{{.a = true, .b = false}, SlotNames{"Ann", std::nullopt}, {.a = true, .b = false}});
    EXPECT_EQ(state().paired, (PartnerSet{.a = true, .b = false}));
    EXPECT_EQ(state().partnerDisplayName, "");
    EXPECT_FALSE(state().partnerNames.contains(PartnerID::b));
    rebuild();
    EXPECT_EQ(state().partnerDisplayName, "") << "nor after a restart";
}

TEST_F(AppRoomTest, EachItemFallsForItsOwnTimeWhateverComesMeanwhile) {
    relay(noteOps("one", PartnerID::b));
    relay(noteOps("two", PartnerID::b));
    const auto first = app->board().items.front().id;
    const auto second = app->board().items.back().id;
    clock.shift(std::chrono::seconds{1});
    relay(*Edits::takeDown(app->board(), first, {PartnerID::b, clock.now()}));
    pass(Seconds{0.5});
    relay(*Edits::takeDown(app->board(), second, {PartnerID::b, clock.now()}));
    pass(Seconds{0.4});
    EXPECT_EQ(state().falling, std::set{second});
    pass(Seconds{0.5});
    EXPECT_TRUE(state().falling.empty());
}

TEST_F(AppRoomTest, ANoteComesDownAlsoWhenTheClockIsSetForward) {
    relay(noteOps("for an hour", PartnerID::b, clock.now() + std::chrono::hours{1}));
    clock.shift(std::chrono::hours{2});
    pass(Seconds{61});
    EXPECT_TRUE(app->board().items.empty());
}

TEST_F(AppRoomTest, RefusalsOfTheRoomAreLoggedAndChangeNothing) {
    relay(noteOps("stays", PartnerID::b));
    rooms.say(ServerMessage::Error{{"limit_exceeded"}, "too many"});
    rooms.say(ServerMessage::Error{{"bad_message"}, "no json"});
    rooms.say(ServerMessage::Error{{"something_new"}, "else"});
    EXPECT_TRUE(hasLogged("app: room error limit_exceeded: too many"));
    EXPECT_TRUE(hasLogged("app: the room could not read a frame: no json"));
    EXPECT_TRUE(hasLogged("app: room error something_new: else"));
    EXPECT_EQ(app->board().items.size(), 1U);
    EXPECT_FALSE(state().connectionRejected);
}

} // namespace
} // namespace lumaro
