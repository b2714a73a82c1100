// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Services/Wallpaper.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

TEST(WallpaperTest, ADesktopIsKnownByItsSessionElseByWhoeverDrawsTheIcons) {
    using enum WallpaperDesk;
    struct Case {
        const char* session;
        const char* icons;
        std::optional<WallpaperDesk> desk;
    };
    for (const auto& [session, icons, desk] :
         {Case{"ubuntu:GNOME", "", gnome}, Case{"X-Cinnamon", "nemo-desktop", cinnamon}, Case{"MATE", "", mate},
          Case{"XFCE", "xfdesktop", xfce}, Case{"", "pcmanfm", pcmanfm}, Case{"LXDE", "pcmanfm", pcmanfm},
          Case{"KDE", "", std::nullopt}, Case{"sway", "", std::nullopt}, Case{"", "", std::nullopt}}) {
        EXPECT_EQ(wallpaperDeskOf(session, icons), desk) << session << "/" << icons;
    }
}

TEST(WallpaperTest, WhatIsSetForTheBoardIsToldFromThePersonsOwnAndTakenBackWhole) {
    const std::string place = "/backdrop/screen0/monitorHDMI-1/workspace";
    struct Case {
        WallpaperDesk desk;
        WallpaperSettings own;
        std::string picture;
    };
    for (const auto& [desk, own, picture] : {
             Case{WallpaperDesk::gnome,
                  {{"picture-uri", "'file:///home/ana/the%20hills.jpg'"}, {"picture-options", std::nullopt}},
                  "/home/ana/the hills.jpg"},
             Case{WallpaperDesk::mate, {{"picture-filename", "'/home/ana/hills.jpg'"}}, "/home/ana/hills.jpg"},
             Case{WallpaperDesk::cinnamon, {{"picture-uri", "'https://elsewhere.example/a.jpg'"}}, ""},
             Case{WallpaperDesk::pcmanfm, {{"wallpaper", "/a.png"}, {"wallpaper_mode", std::nullopt}}, "/a.png"},
             Case{WallpaperDesk::xfce, {{place + "1/last-image", "s:/one.png"}, {place + "1/image-style", "i:3"}}, ""},
             Case{WallpaperDesk::xfce, {{place + "0/last-image", "s:/one.png"}}, "/one.png"},
         }) {
        EXPECT_EQ(pictureIn(desk, own, "HDMI-1"), picture);
        EXPECT_FALSE(isBoardPicture(own));
        auto now = own;
        const std::string path = "/home/o'hara/" + std::string{boardPictureMark} + "7.jpg";
        for (const auto& [name, value] : settingsFor(desk, own, {{"HDMI-1", path}})) now[name] = value;
        EXPECT_TRUE(isBoardPicture(now));
        EXPECT_EQ(pictureIn(desk, now, "HDMI-1"), path);
        for (const auto& [name, value] : settingsBack(own, now)) now[name] = value;
        std::erase_if(now, [&](const auto& setting) { return !setting.second && !own.contains(setting.first); });
        for (const auto& [name, value] : own) EXPECT_EQ(now.at(name), value) << name;
        EXPECT_FALSE(isBoardPicture(now));
        const OwnWallpaper kept{desk, own};
        EXPECT_EQ(readOwnWallpaper(written(kept)), kept);
    }
}

TEST(WallpaperTest, EachMonitorAndWorkspaceOfXfceHasTheBoardAndThoseThatAreLeftFreeDoNot) {
    const std::string start = "/backdrop/screen0/monitor";
    const WallpaperSettings own{{start + "A/workspace3/last-image", "s:/a"},
                                {start + "B/workspace0/last-image", "s:/b"}};
    const auto set = settingsFor(WallpaperDesk::xfce, own, {{"A", "/board.jpg"}});
    EXPECT_EQ(set, (WallpaperSettings{{start + "A/workspace0/last-image", "s:/board.jpg"},
                                      {start + "A/workspace0/image-style", "i:5"},
                                      {start + "A/workspace3/last-image", "s:/board.jpg"},
                                      {start + "A/workspace3/image-style", "i:5"}}));
}

TEST(WallpaperTest, ADamagedFileIsNoWallpaper) {
    const OwnWallpaper own{WallpaperDesk::gnome, {{"picture-uri", "two\nlines \\ and more"}, {"none", std::nullopt}}};
    const auto text = written(own);
    EXPECT_EQ(readOwnWallpaper(text), own);
    for (const std::string& damaged :
         {std::string{}, std::string{"lumaro-own-wallpaper 2 gnome\n"}, std::string{"lumaro-own-wallpaper 1 moon\n"},
          text.substr(0, text.find('\n') + 5), text + "name without a value"}) {
        EXPECT_FALSE(readOwnWallpaper(damaged)) << damaged;
    }
}

} // namespace
} // namespace lumaro
