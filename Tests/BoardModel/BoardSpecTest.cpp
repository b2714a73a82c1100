// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardModel/BoardItem.h"
#include "LumaroCore/Support/EnumNames.h"

#include <gtest/gtest.h>

#include <cmath>

namespace lumaro::BoardSpec {
namespace {

const double notANumber = std::nan("");

TEST(BoardSpec, SizesPhotosAndStickersByTheirAspect) {
    EXPECT_EQ(printSize(std::nullopt), (Size{290, 362}));
    EXPECT_EQ(printSize(3.0), (Size{458, 229}));
    EXPECT_EQ(printSize(-HUGE_VAL), (Size{229, 458}));
    EXPECT_EQ(stickerSize(1.0), (Size{205, 205}));
    EXPECT_EQ(stickerSize(2.6), (Size{324, 130}));
    EXPECT_EQ(stickerSize(0), (Size{130, 324}));
    for (const auto size : {printSize(notANumber), stickerSize(notANumber)})
        EXPECT_TRUE(size.width > 100 && size.height > 100);
}

TEST(BoardSpec, HoldsRotationsAndScalesInTheirRanges) {
    EXPECT_TRUE(isValidRotation(-15) && isValidRotation(15) && isValidScale(0.5) && isValidScale(2));
    for (const double degrees : {std::nextafter(15.0, 16), std::nextafter(-15.0, -16), HUGE_VAL, notANumber})
        EXPECT_FALSE(isValidRotation(degrees)) << degrees;
    for (const double scale : {std::nextafter(0.5, 0), std::nextafter(2.0, 3), -1.0, HUGE_VAL, notANumber})
        EXPECT_FALSE(isValidScale(scale)) << scale;
    const std::vector<std::pair<double, double>> clamped = {
        {clampRotation(20), 15}, {clampRotation(-HUGE_VAL), -15}, {clampRotation(notANumber), 0},
        {clampScale(0.1), 0.5},  {clampScale(HUGE_VAL), 1},       {settleScale(1.03), 1},
        {settleScale(0.97), 1},  {settleScale(1.05), 1.05},       {settleScale(notANumber), 1},
        {settleScale(5), 2}};
    for (const auto& [value, expected] : clamped) EXPECT_EQ(value, expected);
}

} // namespace
} // namespace lumaro::BoardSpec
