// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Windows/WindowPlace.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace lumaro {
namespace {

constexpr WindowSizes sizes{{1180, 780}, {800, 480}};

std::array<ScreenRoom, 2> twoScreens() {
    return {ScreenRoom{QStringLiteral("laptop"), {0, 0, 1366, 728}},
            ScreenRoom{QStringLiteral("big one"), {1366, -200, 2560, 1440}}};
}

TEST(WindowPlaceTest, AWindowThatNeverWasAnywhereIsWholeOnScreensOfAnySize) {
    struct Case {
        QRect screen;
        QSize expected;
    };
    // The last two: 2560 by 1440 pixels at a scale of 2 and of 3.
    for (const auto& [screen, expected] : {Case{{0, 0, 1920, 1080}, {1180, 780}}, Case{{0, 0, 1366, 728}, {1180, 688}},
                                           Case{{0, 0, 1024, 600}, {1024, 560}}, Case{{0, 0, 800, 600}, {800, 560}},
                                           Case{{0, 27, 768, 1339}, {768, 780}}, Case{{0, 0, 1280, 720}, {1180, 680}},
                                           Case{{0, 0, 853, 480}, {853, 440}}}) {
        const std::array screens{ScreenRoom{{}, screen}};
        const auto place = placeWindow({}, screens, sizes);
        EXPECT_EQ(place.rect.size(), expected);
        EXPECT_TRUE(screen.contains(place.rect)) << place.rect.y();
        EXPECT_EQ(place.rect.size(), place.rect.size().expandedTo(place.least));
    }
    EXPECT_EQ(placeWindow({}, {}, sizes).rect.size(), sizes.usual);
}

TEST(WindowPlaceTest, AWindowComesBackWhereItWasOnAScreenThatIsThere) {
    const auto screens = twoScreens();
    WindowPlace place{{900, 700}, QPoint{300, 100}, false, QStringLiteral("big one")};
    EXPECT_EQ(placeWindow(place, screens, sizes), (WindowGeometry{{1666, -100, 900, 700}, sizes.least, false}));
    // Its screen was unplugged; and it hung half out of it.
    EXPECT_EQ(placeWindow(place, std::span{screens}.first(1), sizes).rect, QRect(300, 40, 900, 688));
    place.at = QPoint{2500, -30};
    EXPECT_EQ(placeWindow(place, screens, sizes).rect, QRect(3026, -160, 900, 700));
    place.at.reset();
    place.isMaximized = true;
    EXPECT_EQ(placeWindow(place, screens, sizes), (WindowGeometry{{2196, 190, 900, 700}, sizes.least, true}));
}

TEST(WindowPlaceTest, WhateverTheFileHoldsTheWindowIsWholeOnAScreen) {
    const WindowPlace place{{900, 700}, QPoint{-3, 100}, true, QStringLiteral("a b-1")};
    EXPECT_EQ(WindowPlace::parse(place.text()), place);
    const WindowPlace withoutPlace{{900, 700}, {}, false, {}};
    EXPECT_EQ(WindowPlace::parse(withoutPlace.text()), withoutPlace);
    for (const char* const text : {"", "900x700", "900x700 1,1 windowed", "0x700 1,1 windowed a", "-9x700 - windowed a",
                                   "99999x700 - windowed a", "900x700 1,99999 windowed a", "900x700 1,1 tiled a",
                                   "900x700 1e3,1 windowed a", "900x700 - windowed a\nb"}) {
        EXPECT_EQ(WindowPlace::parse(QLatin1String{text}), std::nullopt) << text;
    }
    EXPECT_EQ(WindowPlace::parse(QStringLiteral("9x9 - windowed ") + QString{300, u'a'}), std::nullopt);
    std::mt19937_64 random{7};
    const auto screens = twoScreens();
    for (int run = 0; run < 500; ++run) {
        const auto number = [&] { return static_cast<int>(random() % 65535) - 32767; };
        const WindowPlace any{{1 + std::abs(number()), 1 + std::abs(number())},
                              QPoint{number(), number()},
                              false,
                              run % 2 == 0 ? QStringLiteral("big one") : QStringLiteral("gone")};
        const auto rect = placeWindow(WindowPlace::parse(any.text()), screens, sizes).rect;
        EXPECT_TRUE(screens[run % 2 == 0 ? 1 : 0].area.contains(rect)) << any.text().toStdString();
    }
}

} // namespace
} // namespace lumaro
