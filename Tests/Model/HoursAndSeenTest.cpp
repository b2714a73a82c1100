// SPDX-License-Identifier: Apache-2.0
#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

#include <chrono>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

class HoursAndSeenTest : public testing::Test, protected AppFixture {
protected:
    void SetUp() override { goOnBoard(); }
    void restart() {
        app->shutdown();
        rebuild();
        start();
    }
    void partnerSays(std::optional<std::string> hours, std::optional<Instant> seen = std::nullopt) {
        ServerMessage::Presence presence;
        presence.from = PartnerID::b;
        presence.zone = std::move(hours);
        presence.seen = seen;
        rooms.say(std::move(presence));
    }
    const std::optional<std::string>& theirZone() const { return state().presence.zone; }
    // What was sent last, a moment later.
    const OwnPresence& told() {
        pass(PresenceSender::pause);
        return rooms.presences.back();
    }
};

TEST_F(HoursAndSeenTest, HoursTravelAfterAYesAloneAndAsTheComputerIsSet) {
    EXPECT_EQ(told().zone, std::nullopt);
    EXPECT_EQ(state().hoursConsent, Consent::notAsked);
    app->hours().share(true);
    EXPECT_EQ(told().zone, "Europe/Berlin");
    EXPECT_FALSE(told().here);
    zone.zone = "Asia/Tokyo";
    signals.changeNetwork();
    EXPECT_EQ(told().zone, "Asia/Tokyo");
    zone.zone.clear();
    app->becameActive();
    EXPECT_EQ(told().zone, std::nullopt) << "it has no name that others know";
    zone.zone = "Europe/Berlin";
    restart();
    rooms.listener->opened({});
    rooms.say(ServerMessage::Welcome{});
    EXPECT_EQ(told().zone, "Europe/Berlin");
    app->hours().share(false);
    EXPECT_EQ(told().zone, std::nullopt);
}

TEST_F(HoursAndSeenTest, ThePartnersHoursAreRememberedOnThisBoardUntilTheyTakeThemBack) {
    for (const auto& bad :
         {std::string{}, std::string(4000, 'x'), std::string{"../../etc/passwd"}, std::string{"Mars/Base"}}) {
        partnerSays(bad);
        EXPECT_EQ(theirZone(), std::nullopt);
    }
    partnerSays("Europe/Lisbon");
    rooms.say(ServerMessage::Roster{PartnerSet{.a = true, .b = false}, std::nullopt});
    EXPECT_EQ(theirZone(), "Europe/Lisbon");
    restart();
    EXPECT_EQ(theirZone(), "Europe/Lisbon") << "before the room speaks, and while they are away";
    rooms.listener->opened({});
    partnerSays(std::nullopt);
    EXPECT_EQ(theirZone(), std::nullopt);
    restart();
    EXPECT_EQ(theirZone(), std::nullopt);
    rooms.listener->opened({});
    partnerSays("Europe/Lisbon");
    app->pair("lm1.other234.a.nbswy3dpo5xxe3de", [](auto) {});
    background.runAll();
    EXPECT_EQ(theirZone(), std::nullopt);
    EXPECT_EQ(defaults.string("partnerZone"), std::nullopt);
}

TEST_F(HoursAndSeenTest, WhatWasLookedAtIsToldIfThePersonLetsItAndNeverMore) {
    relay(noteOps("one", PartnerID::b));
    const auto first = clock.now();
    app->setLooking(true);
    pass(SeenSharing::glance);
    EXPECT_EQ(told().seen, std::nullopt) << "the switch is off at first";
    app->seen().share(true);
    EXPECT_EQ(told().seen, first);
    app->setLooking(false);
    pass(60s);
    auto ahead = noteOps("from a clock that is ahead", PartnerID::b);
    std::get<Upsert>(ahead.front().value).item.createdAt = clock.now() + 24h;
    relay(std::move(ahead));
    relay(noteOps("two", PartnerID::b));
    const auto second = clock.now();
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    EXPECT_EQ(told().seen, first) << "nobody looks";
    app->setLooking(true);
    pass(Seconds{2.5});
    app->setLooking(false);
    EXPECT_EQ(told().seen, first) << "a glance in passing";
    app->setLooking(true);
    pass(SeenSharing::glance);
    EXPECT_EQ(told().seen, second);
    restart();
    rooms.listener->opened({});
    ServerMessage::Welcome welcome;
    welcome.board = app->board();
    rooms.say(std::move(welcome));
    EXPECT_EQ(told().seen, second);
    relay(*Edits::takeDown(app->board(), app->board().items.back().id, {PartnerID::b, clock.now()}));
    EXPECT_LE(*told().seen, second);
    app->seen().share(false);
    EXPECT_EQ(told().seen, std::nullopt);
}

TEST_F(HoursAndSeenTest, TheNewestThatThePartnerSawIsRememberedAndSpeaksForNothingYetToCome) {
    ASSERT_TRUE(app->liveBoard().act(noteOps("mine", PartnerID::a)));
    const auto mine = clock.now();
    partnerSays(std::nullopt, clock.now() + 1000h);
    EXPECT_EQ(state().presence.seen, mine);
    partnerSays(std::nullopt, mine - 1h);
    partnerSays(std::nullopt);
    EXPECT_EQ(state().presence.seen, mine);
    restart();
    EXPECT_EQ(state().presence.seen, mine);
    rooms.listener->opened({});
    rooms.say(ServerMessage::Roster{.online = {.a = true, .b = false}, .names = {}, .paired = {.a = true, .b = false}});
    EXPECT_EQ(state().presence.seen, std::nullopt) << "whoever comes next has seen nothing";
}

} // namespace
} // namespace lumaro
