// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Computer/BoardWallpaper.h"

#include "Tests/Fakes/FakeWallpaper.h"
#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Fakes/RecordingLog.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

using enum BoardWallpaper::State;

class BoardWallpaperTest : public testing::Test {
protected:
    BoardWallpaperTest() { restart(); }

    // The program ends without a word, and is started again.
    void restart() {
        wallpaper_.reset();
        background_.runAll();
        painter_.stop();
        wallpaper_ = std::make_unique<BoardWallpaper>(
            "/profile/wallpaper", BoardWallpaper::Ports{sleeper_, clock_, log_, files_, background_, door_, painter_},
            [] {});
    }
    void hang() {
        wallpaper_->hang(WallpaperDesk::gnome, false);
        finish();
    }
    void finish() {
        background_.runAll();
        painter_.finish();
        background_.runAll();
    }
    bool isBoardThere() const { return isBoardPicture(door_.settings); }
    bool isKept() { return files_.readFile("/profile/wallpaper/own-wallpaper").has_value(); }

    ManualSleeper sleeper_;
    ManualClock clock_{sleeper_, Instant{std::chrono::seconds{1'790'000'000}}};
    RecordingLog log_;
    MemoryFileSystem files_;
    ManualBackground background_;
    FakeWallpaperDoor door_;
    FakeBoardPainter painter_;
    const WallpaperSettings own_ = door_.settings;
    std::unique_ptr<BoardWallpaper> wallpaper_;
};

TEST_F(BoardWallpaperTest, ThePersonsOwnIsKeptDurablyBeforeTheBoardHangsAndComesBack) {
    wallpaper_->hang(WallpaperDesk::gnome, false);
    background_.runAll();
    EXPECT_EQ(door_.writes, 0);
    files_.crash();
    EXPECT_EQ(readOwnWallpaper(files_.readFile("/profile/wallpaper/own-wallpaper").value()),
              (OwnWallpaper{WallpaperDesk::gnome, own_}));
    finish();
    EXPECT_TRUE(isBoardThere());
    wallpaper_->putBack();
    background_.runAll();
    for (const auto& [name, value] : own_) EXPECT_EQ(door_.settings.at(name), value);
    EXPECT_FALSE(isBoardThere() || isKept());
}

TEST_F(BoardWallpaperTest, AfterACrashItGoesOnOrIsPutBack) {
    hang();
    restart();
    hang();
    EXPECT_EQ(wallpaper_->state(), hanging);
    restart();
    wallpaper_->putBack();
    background_.runAll();
    EXPECT_EQ(door_.settings.at("picture-uri"), own_.at("picture-uri"));
}

TEST_F(BoardWallpaperTest, WhoeverChoosesAnotherWallpaperKeepsIt) {
    hang();
    door_.settings["picture-uri"] = "'file:///home/ana/sea.jpg'";
    wallpaper_->boardChanged();
    sleeper_.advance(BoardWallpaper::pause);
    finish();
    EXPECT_EQ(wallpaper_->state(), madeWay);
    EXPECT_EQ(door_.settings.at("picture-uri"), "'file:///home/ana/sea.jpg'");
    EXPECT_FALSE(isKept());
}

TEST_F(BoardWallpaperTest, ItIsPaintedAtMostEveryTenSecondsAndAtOnceWhenSomebodyLooks) {
    hang();
    for (int change = 0; change < 9; ++change) {
        wallpaper_->boardChanged();
        sleeper_.advance(Seconds{1});
        finish();
    }
    EXPECT_EQ(painter_.orders.size(), 1U);
    sleeper_.advance(Seconds{1});
    finish();
    EXPECT_EQ(painter_.orders.size(), 2U);
    sleeper_.advance(Seconds{100});
    EXPECT_EQ(painter_.orders.size(), 2U) << "nothing changed";
    wallpaper_->boardChanged();
    finish();
    wallpaper_->boardChanged();
    wallpaper_->look();
    finish();
    EXPECT_EQ(painter_.orders.size(), 4U);
    wallpaper_->setAsleep(true);
    wallpaper_->boardChanged();
    sleeper_.advance(Seconds{100});
    EXPECT_EQ(painter_.orders.size(), 4U) << "nobody can look";
    wallpaper_->setAsleep(false);
    EXPECT_TRUE(painter_.isAsked());
}

TEST_F(BoardWallpaperTest, NothingIsChangedWhereTheOwnCannotBeKeptOrTheDesktopWouldNot) {
    files_.fault = [](std::string_view call) {
        return call == "syncFile" ? std::optional{FileFault::noSpace} : std::nullopt;
    };
    hang();
    EXPECT_EQ(wallpaper_->state(), failed);
    EXPECT_EQ(door_.settings, own_);
    files_.fault = nullptr;
    door_.failure = "no bus";
    hang();
    EXPECT_EQ(wallpaper_->state(), failed);
    door_.failure.reset();
    door_.settings["picture-uri"] = "'file:///elsewhere/lumaro-board-1.jpg'";
    hang();
    EXPECT_EQ(wallpaper_->state(), failed) << "of whom it is not known what was there before";
    EXPECT_TRUE(painter_.orders.empty());
}

TEST_F(BoardWallpaperTest, OverTheirOwnPictureIsSaidOfThePictureThatWasThere) {
    hang();
    EXPECT_FALSE(painter_.orders.back().ownPicture);
    wallpaper_->hang(WallpaperDesk::gnome, true);
    ASSERT_EQ(painter_.orders.size(), 2U);
    EXPECT_EQ(painter_.orders.back().ownPicture(""), "/home/ana/hills.jpg");
}

} // namespace
} // namespace lumaro
