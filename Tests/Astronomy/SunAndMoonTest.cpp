// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Astronomy/SunAndMoon.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <numbers>

namespace lumaro {
namespace {

using namespace std::chrono;

Instant utc(int y, unsigned m, unsigned d, int h = 0, int min = 0) {
    return sys_days{year{y} / month{m} / day{d}} + hours{h} + minutes{min};
}

double apart(Horizontal a, Horizontal b) {
    constexpr double radian = std::numbers::pi / 180;
    return std::acos(std::sin(a.altitude * radian) * std::sin(b.altitude * radian) +
                     std::cos(a.altitude * radian) * std::cos(b.altitude * radian) *
                         std::cos((a.azimuth - b.azimuth) * radian)) /
           radian;
}

constexpr Coordinates greenwich{51.4779, 0};
constexpr Coordinates newYork{40.71, -74.01};
constexpr Coordinates sydney{-33.87, 151.21};
constexpr Coordinates tromsoe{69.65, 18.96};

// Jean Meeus, Astronomical Algorithms, examples 25.a, 47.a, 48.a and 13.b.
TEST(SunAndMoon, MatchTheWorkedExamplesOfTheBook) {
    const auto sun = sunAmongStars(utc(1992, 10, 13));
    EXPECT_NEAR(sun.rightAscension, 198.38083, 0.005);
    EXPECT_NEAR(sun.declination, -7.78507, 0.005);
    const auto moon = moonAmongStars(utc(1992, 4, 12));
    EXPECT_NEAR(moon.rightAscension, 134.688470, 0.02);
    EXPECT_NEAR(moon.declination, 13.768368, 0.02);
    EXPECT_NEAR(moonSeenFrom({}, utc(1992, 4, 12)).illuminated, 0.6786, 0.001);
    const Equatorial venus{347.3193375, -6.719892};
    const auto seen = overHorizon(venus, {38.921389, -77.065556}, utc(1987, 4, 10, 19, 21));
    EXPECT_NEAR(seen.altitude, 15.1249, 0.01);
    EXPECT_NEAR(seen.azimuth, 180 + 68.0337, 0.01);
}

// The Astronomical Almanac: equinox 2024-03-20 03:06, solstice 2024-06-20 20:51. The sun stands over the Kaaba on 28
// May at 09:18 and on 16 July at 09:27.
TEST(Sun, StandsWhereTheSeasonsSay) {
    EXPECT_NEAR(sunAmongStars(utc(2024, 3, 20, 3, 6)).declination, 0, 0.005);
    EXPECT_NEAR(sunAmongStars(utc(2024, 6, 20, 20, 51)).declination, 23.438, 0.005);
    EXPECT_GT(sunSeenFrom({21.4225, 39.8262}, utc(2024, 5, 27, 9, 18)).altitude, 89.6);
    EXPECT_GT(sunSeenFrom({21.4225, 39.8262}, utc(2024, 7, 15, 9, 27)).altitude, 89.6);
    for (const int hour : {0, 3, 6, 9, 12, 15, 18, 21}) {
        EXPECT_GT(sunSeenFrom(tromsoe, utc(2024, 6, 21, hour)).altitude, 2) << hour;
        EXPECT_LT(sunSeenFrom(tromsoe, utc(2024, 12, 21, hour)).altitude, -2) << hour;
    }
}

// Rise and set as the tables of HM Nautical Almanac Office and the US Naval Observatory give them, to the minute.
TEST(Sun, RisesAndSetsByTheTables) {
    const struct {
        Coordinates point;
        Instant instant;
        bool isMorning;
    } table[] = {{greenwich, utc(2024, 6, 20, 3, 43), true}, {greenwich, utc(2024, 6, 20, 20, 21), false},
                 {newYork, utc(2024, 6, 20, 9, 25), true},   {newYork, utc(2024, 6, 21, 0, 31), false},
                 {newYork, utc(2024, 12, 21, 12, 17), true}, {newYork, utc(2024, 12, 21, 21, 32), false},
                 {sydney, utc(2024, 12, 20, 18, 41), true},  {sydney, utc(2024, 12, 21, 9, 5), false}};
    for (const auto& [point, instant, isMorning] : table) {
        const auto seen = sunSeenFrom(point, instant);
        EXPECT_NEAR(seen.altitude, -0.27, 0.25) << instant.time_since_epoch();
        EXPECT_EQ(seen.azimuth < 180, isMorning);
    }
    EXPECT_NEAR(sunSeenFrom(greenwich, utc(2024, 4, 15, 12)).azimuth, 180, 0.2); // the sundial agrees with the clock
}

// NASA, Five Millennium Catalog of Eclipses: totality at these places in these minutes.
TEST(Moon, CoversTheSunInEclipses) {
    const struct {
        Coordinates point;
        Instant instant;
    } totalities[] = {{{37.73, -89.22}, utc(2017, 8, 21, 18, 21)}, // Carbondale
                      {{32.78, -96.80}, utc(2024, 4, 8, 18, 42)},  // Dallas
                      {{23.25, -106.41}, utc(2024, 4, 8, 18, 9)}}; // Mazatlán
    for (const auto& [point, instant] : totalities) {
        const auto moon = moonSeenFrom(point, instant);
        EXPECT_LT(apart(moon.place, sunSeenFrom(point, instant)), 0.06);
        EXPECT_LT(moon.illuminated, 0.001);
    }
    // And the earth's shadow the moon, seen from the Pacific.
    const Coordinates honolulu{21.31, -157.86};
    const auto at = utc(2022, 11, 8, 10, 59);
    const auto sun = sunSeenFrom(honolulu, at);
    EXPECT_NEAR(apart(moonSeenFrom(honolulu, at).place, {-sun.altitude, sun.azimuth + 180}), 0, 1.2);
}

// Phases by the US Naval Observatory.
TEST(Moon, HasThePhaseOfTheAlmanac) {
    EXPECT_GT(moonSeenFrom({}, utc(2024, 9, 18, 2, 34)).illuminated, 0.999);
    const auto first = moonSeenFrom(newYork, utc(2024, 4, 15, 19, 13));
    EXPECT_NEAR(first.illuminated, 0.5, 0.005);
    EXPECT_TRUE(first.isWaxing);
    const auto last = moonSeenFrom(newYork, utc(2024, 5, 1, 11, 27));
    EXPECT_NEAR(last.illuminated, 0.5, 0.005);
    EXPECT_FALSE(last.isWaxing);
}

// The lit side of a waxing half moon on the meridian: right in the north, left in the south, below in the tropics.
TEST(Moon, LightsUpTowardsTheSunAsItIsSeen) {
    // Of the first quarter of 2024-04-15: near the meridian at nightfall.
    EXPECT_NEAR(moonSeenFrom(newYork, utc(2024, 4, 15, 23, 45)).brightLimb, -90, 35);
    EXPECT_NEAR(moonSeenFrom(sydney, utc(2024, 4, 15, 8, 30)).brightLimb, 90, 35);
    const auto singapore = moonSeenFrom({1.35, 103.82}, utc(2024, 4, 15, 15));
    EXPECT_GT(std::abs(singapore.brightLimb), 120);
}

TEST(SunAndMoon, AnswerForEveryInstantAndPoint) {
    for (const auto instant : {Instant::min(), Instant{}, Instant::max()}) {
        for (const Coordinates point : {Coordinates{90, 180}, Coordinates{-90, -180}, Coordinates{0, 0}}) {
            const auto sun = sunSeenFrom(point, instant);
            const auto moon = moonSeenFrom(point, instant);
            EXPECT_LE(std::abs(sun.altitude), 91);
            EXPECT_TRUE(sun.azimuth >= 0 && sun.azimuth <= 360);
            EXPECT_LE(std::abs(moon.place.altitude), 92);
            EXPECT_TRUE(moon.illuminated >= 0 && moon.illuminated <= 1);
            EXPECT_LE(std::abs(moon.brightLimb), 180);
        }
    }
}

} // namespace
} // namespace lumaro
