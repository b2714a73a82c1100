// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Presence/Pomodoro.h"
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

using Kind = NotificationAnswer::Kind;

class BoardNotificationsTest : public testing::Test, protected AppFixture {
protected:
    void SetUp() override {
        goOnBoard();
        app->onNews([this](const AppNews& news) { asked_ += news.isBoardWanted ? 1 : 0; });
    }
    UUID arrive() {
        auto ops = noteOps("hello", PartnerID::b);
        const auto id = std::get<Upsert>(ops.front().value).item.id;
        relay(std::move(ops));
        return id;
    }
    // A block of five minutes that both are in has just ended.
    UUID ring() {
        const auto id = ids.next();
        auto timer = Pomodoro::started({}, 5, PartnerID::b, clock.now());
        timer = Pomodoro::joined(timer, PartnerID::a, clock.now());
        relay(*Edits::putUp(app->board(), id, timer, std::nullopt, {PartnerID::b, clock.now()}));
        app->setLooking(true);
        pass(Seconds{300});
        return id;
    }
    PomodoroPhase phaseOf(const UUID& card) const {
        return app->board().find(card)->payload.as<PomodoroPayload>()->phase;
    }

    int asked_ = 0;
};

TEST_F(BoardNotificationsTest, ManyBecomeOneUntilTheBoardWasSeen) {
    for (int i = 0; i < 7; ++i) arrive();
    EXPECT_EQ(notifications.posted.front().body, "hello");
    EXPECT_EQ(notifications.posted.back(), (LocalNotification{"Ben", "Ben put up 7 things", {}, "items"}));
    app->setLooking(true);
    EXPECT_EQ(notifications.withdrawn, std::vector<std::string>{"items"});
    app->setLooking(false);
    arrive();
    EXPECT_EQ(notifications.posted.back().body, "hello");
    notifications.tap({Kind::dismissed, "items"});
    arrive();
    EXPECT_EQ(notifications.posted.back().body, "hello");
    app->leaveBoard();
    EXPECT_EQ(notifications.withdrawn.size(), 2U) << "of a board that was left nothing is told";
}

TEST_F(BoardNotificationsTest, OneThatIsOpenedLeadsToItsItem) {
    arrive();
    const auto latest = arrive();
    notifications.tap({Kind::opened, "items"});
    EXPECT_EQ(app->editor().inHand().selection(), latest);
    EXPECT_EQ(asked_, 1);
    const auto another = arrive();
    relay(*Edits::takeDown(app->board(), another, {PartnerID::b, clock.now()}));
    ASSERT_TRUE(app->editor().inHand().beginEditing(latest));
    notifications.tap({Kind::opened, "items"});
    EXPECT_EQ(app->editor().inHand().selection(), latest) << "what is gone, or what the hand is at, is left alone";
    EXPECT_EQ(asked_, 2);
    notifications.tap({Kind::opened, "another program's"});
    EXPECT_EQ(asked_, 2);
}

TEST_F(BoardNotificationsTest, AFinishedBlockOffersWhatTheCardDoes) {
    const auto card = ring();
    const auto told = notifications.posted.back();
    EXPECT_EQ(told.title + ": " + told.body, "the block is over: you and Ben made it. cool down a little, or rest?");
    EXPECT_EQ(told.actions, (std::vector<NotificationAction>{{"coolDown", "cool down"}, {"rest", "rest"}}));
    notifications.tap({Kind::acted, "block", "coolDown"});
    EXPECT_EQ(phaseOf(card), PomodoroPhase::coolDown);
    notifications.tap({Kind::acted, "block", "rest"});
    EXPECT_EQ(phaseOf(card), PomodoroPhase::coolDown) << "it was answered already";
    EXPECT_EQ(asked_, 0);
    pass(Seconds{900});
    EXPECT_EQ(notifications.posted.back().title, "the cool-down is over");
    EXPECT_TRUE(notifications.posted.back().actions.empty());
}

TEST_F(BoardNotificationsTest, TheSettingsSayWhatIsTold) {
    defaults.setBoolean("notifiesOfItems", false);
    arrive();
    EXPECT_TRUE(notifications.posted.empty());
    defaults.setBoolean("notifiesOfBlocks", false);
    ring();
    EXPECT_TRUE(notifications.posted.empty());
}

} // namespace
} // namespace lumaro
