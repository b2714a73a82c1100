// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/HungBoard.h"

#include "Tests/Model/AppFixture.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

// A note on the board of two, and the board as their desktops show it.
class HungBoardTest : public testing::Test {
protected:
    HungBoardTest() {
        person.goOnBoard();
        person.app->onChange([this] { scene.refresh(); });
        person.app->editor().onChange([this] { scene.refreshHand(); });
        person.relay(person.noteOps("oranges", PartnerID::b));
        hung.setScene(&scene);
        QObject::connect(hung.rows(), &QAbstractItemModel::dataChanged, [this] { ++changes; });
    }
    ~HungBoardTest() override {
        person.app->onChange(nullptr);
        person.app->editor().onChange(nullptr);
    }

    const UUID& note() const { return person.app->board().items.front().id; }
    Point place() { return hung.rows()->rows().front().center; }

    AppFixture person;
    BoardScene scene{{*person.app, person.clock, person.sleeper, person.background}};
    HungBoard hung;
    int changes = 0;
};

TEST_F(HungBoardTest, WhatIsInTheHandHangsWhereItHungUntilItIsLetGo) {
    const auto before = place();
    auto& editor = person.app->editor();
    ASSERT_TRUE(editor.beginGesture(note()));
    ASSERT_TRUE(editor.moveTo({300, 300}));
    EXPECT_EQ(scene.rows()->rows().front().center, Point(300, 300));
    EXPECT_EQ(place(), before);
    EXPECT_EQ(changes, 0);
    ASSERT_TRUE(editor.endGesture());
    EXPECT_EQ(place(), Point(300, 300));
}

TEST_F(HungBoardTest, NothingChangesWhileItIsPausedAndAllAtOnceAfterwards) {
    hung.setPaused(true);
    const auto background = hung.background();
    ASSERT_TRUE(person.app->editor().move(note(), {400, 400}));
    ASSERT_TRUE(person.app->editor().setBackground(BackgroundID::lilac));
    person.relay(person.noteOps("bread", PartnerID::b));
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(hung.rows()->rowCount(), 1);
    EXPECT_EQ(hung.background(), background);
    hung.setPaused(false);
    EXPECT_EQ(place(), Point(400, 400));
    EXPECT_EQ(hung.rows()->rowCount(), 2);
    EXPECT_EQ(hung.background(), QStringLiteral("lilac"));
}

} // namespace
} // namespace lumaro
