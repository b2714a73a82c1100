// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/DesktopBoards.h"

#include "Tests/DesktopKit/OwnDisplay.h"
#include "Tests/Fakes/MemoryDefaults.h"

#include <QPointer>
#include <QQuickWindow>
#include <QScreen>

#include <algorithm>

namespace lumaro {
namespace {

// Two screens, left and right, and the boards that hang there.
class DesktopBoardsTest : public OwnDisplayTest {
protected:
    DesktopBoardsTest() {
        plugIn(left_, QStringLiteral("640/160x800/200+0+0"), QStringLiteral("screen"));
        plugIn(right_, QStringLiteral("640/160x800/200+640+0"), QStringLiteral("none"));
        waitUntil([] { return QGuiApplication::screens().size() == 2; });
    }
    ~DesktopBoardsTest() override {
        for (const auto& name : {right_, left_}) unplug(name);
        waitUntil([this] { return QGuiApplication::primaryScreen()->name() == whole_; });
    }

    static void plugIn(const QString& name, const QString& place, const QString& output) {
        said(QStringLiteral("xrandr"), {QStringLiteral("--setmonitor"), name, place, output});
    }
    static void unplug(const QString& name) { said(QStringLiteral("xrandr"), {QStringLiteral("--delmonitor"), name}); }

    QStringList hanging() const {
        QStringList names;
        for (const auto& [name, window] : windows_) {
            if (window && window->isVisible()) names.append(name);
        }
        return names;
    }
    bool isPaused(const QString& name) const { return windows_.at(name)->property("isPaused").toBool(); }

    std::map<QString, QPointer<QQuickWindow>> windows_;
    MemoryDefaults defaults_;
    DesktopBoards boards_{defaults_, [this](QScreen& screen) {
                              auto window = std::make_unique<QQuickWindow>();
                              windows_[screen.name()] = window.get();
                              return window;
                          }};
    const QString left_ = QStringLiteral("left");
    const QString right_ = QStringLiteral("right");
    const QString whole_ = QStringLiteral("screen"); ///< when it is not two
    const QString wide_ = QStringLiteral("1280x800");
};

TEST_F(DesktopBoardsTest, ABoardHangsOnEachScreenAsLongAsItIsWanted) {
    EXPECT_EQ(boards_.level(), std::nullopt);
    boards_.setEnabled(true);
    EXPECT_EQ(hanging(), (QStringList{left_, right_}));
    EXPECT_EQ(boards_.level(), DesktopLevel::behindIcons);
    waitUntil([&] { return windows_.at(right_)->isExposed(); });
    EXPECT_EQ(windows_.at(right_)->geometry(), QRect(640, 0, 640, 800));
    boards_.setEnabled(false);
    EXPECT_EQ(hanging(), QStringList{});
    EXPECT_EQ(boards_.level(), std::nullopt);
}

TEST_F(DesktopBoardsTest, BoardsFollowScreensThatComeGoAndChange) {
    const auto small = QStringLiteral("--newmode small 50 1024 1030 1040 1050 700 710 720 730");
    said(QStringLiteral("xrandr"), small.split(u' '));
    said(QStringLiteral("xrandr"), {QStringLiteral("--addmode"), whole_, QStringLiteral("small")});
    boards_.setEnabled(true);
    unplug(right_);
    waitUntil([&] { return hanging() == QStringList{left_}; });
    plugIn(right_, QStringLiteral("320/80x400/100+640+0"), QStringLiteral("none"));
    waitUntil([&] { return hanging().size() == 2 && windows_.at(right_)->geometry() == QRect(640, 0, 320, 400); });
    for (const auto& name : {right_, left_}) unplug(name);
    waitUntil([&] { return hanging() == QStringList{whole_}; });
    for (const auto& [mode, size] : {std::pair{QStringLiteral("small"), QSize{1024, 700}}, {wide_, QSize{1280, 800}}}) {
        said(QStringLiteral("xrandr"), {QStringLiteral("--output"), whole_, QStringLiteral("--mode"), mode});
        waitUntil([&] { return windows_.at(whole_)->geometry() == QRect(QPoint{0, 0}, size); });
    }
}

TEST_F(DesktopBoardsTest, AScreenThatWasNotChosenStaysFreeAlsoNextTime) {
    boards_.setEnabled(true);
    boards_.choose(left_, false);
    EXPECT_EQ(hanging(), QStringList{right_});
    EXPECT_EQ(boards_.choices(), (std::vector<DesktopBoards::Choice>{{left_, false}, {right_, true}}));
    DesktopBoards next{defaults_, [](QScreen&) { return std::make_unique<QQuickWindow>(); }};
    EXPECT_EQ(next.choices(), boards_.choices());
    boards_.choose(right_, false);
    EXPECT_EQ(hanging(), QStringList{});
    boards_.choose(left_, true);
    boards_.choose(right_, true);
    EXPECT_EQ(hanging(), (QStringList{left_, right_}));
}

TEST_F(DesktopBoardsTest, AScreenThatIsPluggedInForTheFirstTimeIsChosen) {
    unplug(right_);
    waitUntil([] { return QGuiApplication::screens().size() == 1; });
    boards_.setEnabled(true);
    boards_.choose(left_, false);
    plugIn(right_, QStringLiteral("640/160x800/200+640+0"), QStringLiteral("none"));
    waitUntil([&] { return hanging() == QStringList{right_}; });
}

TEST_F(DesktopBoardsTest, WhatWasChosenOfFormerSettingsStaysAndTheRestIsLeftFree) {
    defaults_.setString("desktopScreens", "right,elsewhere");
    const DesktopBoards next{defaults_, [](QScreen&) { return std::make_unique<QQuickWindow>(); }};
    EXPECT_EQ(next.choices(), (std::vector<DesktopBoards::Choice>{{left_, false}, {right_, true}}));
    EXPECT_FALSE(defaults_.string("desktopScreens"));
}

TEST_F(DesktopBoardsTest, NoBoardHangsWhereItWouldCoverSomebodysIcons) {
    boards_.setEnabled(true);
    QWindow icons;
    icons.setFlag(Qt::FramelessWindowHint);
    icons.setGeometry(0, 0, 640, 800);
    icons.create();
    becomeDesktopOfAnother(icons);
    icons.show();
    waitUntil([&] { return hanging() == QStringList{right_}; });
    EXPECT_EQ(boards_.level(), DesktopLevel::iconsInTheWay);
    boards_.choose(left_, false);
    EXPECT_EQ(boards_.level(), DesktopLevel::behindIcons);
    boards_.choose(left_, true);
    icons.hide();
    waitUntil([&] { return hanging() == QStringList({left_, right_}); });
}

TEST_F(DesktopBoardsTest, ABoardThatNobodySeesRests) {
    boards_.setEnabled(true);
    waitUntil([&] { return windows_.at(left_)->isExposed() && windows_.at(right_)->isExposed(); });
    QWindow cover;
    cover.setFlag(Qt::FramelessWindowHint);
    cover.setGeometry(0, 0, 640, 800);
    cover.show();
    waitUntil([&] { return isPaused(left_); });
    EXPECT_FALSE(isPaused(right_));
    cover.hide();
    waitUntil([&] { return !isPaused(left_); });
    boards_.setScreenLocked(true);
    EXPECT_TRUE(isPaused(left_) && isPaused(right_));
    boards_.setScreenLocked(false);
    EXPECT_FALSE(isPaused(left_) || isPaused(right_));
}

} // namespace
} // namespace lumaro
