// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/DesktopWords.h"

#include <gtest/gtest.h>

namespace lumaro {
namespace {

TEST(DesktopWordsTest, WhereNothingHangsItIsSaidWhyAndWhetherAWallpaperIsPossible) {
    using enum DesktopLevel;
    const auto pcmanfm = QStringLiteral("pcmanfm");
    const auto has = [](const QString& words, const char* part) { return words.contains(QLatin1String{part}); };
    EXPECT_TRUE(has(hangingWords(behindIcons, {}, true), "behind the icons; "));
    EXPECT_TRUE(has(hangingWords(iconsInTheWay, pcmanfm, false), "pcmanfm draws icons and wallpaper as one"));
    EXPECT_FALSE(has(hangingWords(iconsInTheWay, pcmanfm, false), "can be the wallpaper"));
    EXPECT_TRUE(has(hangingWords(iconsInTheWay, {}, true), "your desktop draws"));
    EXPECT_TRUE(has(hangingWords(iconsInTheWay, {}, true), "the board can be the wallpaper instead"));
    EXPECT_TRUE(has(hangingWords(refused, {}, false), "stays in its window"));
    EXPECT_TRUE(has(hangingWords(refused, {}, true), "can be its wallpaper"));
}

} // namespace
} // namespace lumaro
