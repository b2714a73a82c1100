// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/DesktopScene.h"

#include "Tests/Model/AppFixture.h"

#include <QtCore/QDateTime>
#include <QtCore/QTimeZone>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

namespace lumaro {
namespace {

// A note on the board of two, and the board as their desktops show it.
class DesktopSceneTest : public testing::Test {
protected:
    DesktopSceneTest() {
        person.goOnBoard();
        person.app->onNews([this](const AppNews& news) { scene.hear(news.changed); });
        person.relay(person.noteOps("oranges", PartnerID::b));
        desktop.setScene(&scene);
        QObject::connect(desktop.rows(), &QAbstractItemModel::dataChanged, [this] { ++changes; });
    }
    ~DesktopSceneTest() override { person.app->onNews(nullptr); }

    const UUID& note() const { return person.app->board().items.front().id; }
    Point place() { return desktop.rows()->rows().front().center; }

    AppFixture person;
    BoardScene scene{{*person.app, person.clock, person.sleeper, person.background}};
    DesktopScene desktop;
    int changes = 0;
};

TEST_F(DesktopSceneTest, WhatIsInTheHandHangsWhereItHungUntilItIsLetGo) {
    const auto before = place();
    auto& editor = person.app->editor();
    ASSERT_TRUE(editor.inHand().beginGesture(note()));
    ASSERT_TRUE(editor.inHand().moveTo({300, 300}));
    EXPECT_EQ(scene.rows()->rows().front().center, Point(300, 300));
    EXPECT_EQ(place(), before);
    EXPECT_EQ(changes, 0);
    ASSERT_TRUE(editor.inHand().endGesture());
    EXPECT_EQ(place(), Point(300, 300));
}

TEST_F(DesktopSceneTest, NothingChangesWhileItIsPausedAndAllAtOnceAfterwards) {
    desktop.setPaused(true);
    const auto background = desktop.background();
    ASSERT_TRUE(person.app->editor().carryOut({BoardVerb::Move{note(), {400, 400}}}));
    ASSERT_TRUE(person.app->editor().carryOut({BoardVerb::SetBackground{BackgroundID::lilac}}));
    person.relay(person.noteOps("bread", PartnerID::b));
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(desktop.rows()->rowCount(), 1);
    EXPECT_EQ(desktop.background(), background);
    desktop.setPaused(false);
    EXPECT_EQ(place(), Point(400, 400));
    EXPECT_EQ(desktop.rows()->rowCount(), 2);
    EXPECT_EQ(desktop.background(), QStringLiteral("lilac"));
}

TEST_F(DesktopSceneTest, TheZoneOfThisComputerIsNoticedWithinAMinute) {
    const auto time = [&] {
        const auto& rows = scene.rows()->rows();
        const auto clocks = std::ranges::find_if(rows, [](const BoardRow& row) { return row.face.as<ClocksFace>(); });
        return clocks == rows.end() ? QString{} : clocks->face.as<ClocksFace>()->mine.time;
    };
    const auto timeIn = [&](const char* zone) {
        return QDateTime::fromSecsSinceEpoch(
                   std::chrono::floor<std::chrono::seconds>(person.clock.now()).time_since_epoch().count(),
                   QTimeZone{zone})
            .toString(QStringLiteral("HH:mm"));
    };
    const auto was = qgetenv("TZ");
    qputenv("TZ", "Pacific/Auckland");
    person.sleeper.advance(Seconds{61});
    person.relay(*Edits::putUp(person.app->board(), person.ids.next(), TimezonesPayload{}, Point{600, 300},
                               {PartnerID::b, person.clock.now()}));
    EXPECT_EQ(time(), timeIn("Pacific/Auckland"));
    qputenv("TZ", "Asia/Kathmandu");
    person.sleeper.advance(Seconds{61});
    EXPECT_EQ(time(), timeIn("Asia/Kathmandu"));
    was.isNull() ? qunsetenv("TZ") : qputenv("TZ", was);
}

} // namespace
} // namespace lumaro
