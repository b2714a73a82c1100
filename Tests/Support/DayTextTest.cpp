// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/DayText.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using Day = std::chrono::year_month_day;
using Answer = std::expected<Day, DayFault>;

// A Wednesday.
constexpr Day today = 2026y / 11 / 25d;

DayWords german() {
    DayWords words;
    words.months = {{{"Januar"},
                     {"Februar"},
                     {"März", "Mrz."},
                     {"April"},
                     {"Mai"},
                     {"Juni"},
                     {"Juli"},
                     {"August"},
                     {"September"},
                     {"Oktober"},
                     {"November"},
                     {"Dezember", "Dez."}}};
    words.weekdays = {
        {{"Montag", "Mo."}, {"Dienstag"}, {"Mittwoch"}, {"Donnerstag"}, {"Freitag"}, {"Samstag"}, {"Sonntag"}}};
    words.today = {"heute"};
    words.tomorrow = {"morgen"};
    words.dayAfterTomorrow = {"übermorgen"};
    return words;
}

DayWords english() {
    DayWords words;
    words.months = {{{"January"},
                     {"February"},
                     {"March"},
                     {"April"},
                     {"May"},
                     {"June"},
                     {"July"},
                     {"August"},
                     {"September"},
                     {"October"},
                     {"November"},
                     {"December"}}};
    words.weekdays = {{{"Monday"}, {"Tuesday"}, {"Wednesday"}, {"Thursday"}, {"Friday"}, {"Saturday"}, {"Sunday"}}};
    words.today = {"today"};
    words.tomorrow = {"tomorrow"};
    words.isMonthFirst = true;
    return words;
}

void expectDays(const DayWords& words, const std::vector<std::pair<std::string, Answer>>& cases) {
    for (const auto& [text, answer] : cases) {
        const auto day = parseDay(text, words, today);
        EXPECT_EQ(day, answer) << text
                               << (day ? std::to_string(std::chrono::sys_days{*day}.time_since_epoch().count()) : "");
    }
}

TEST(DayTextTest, ADayIsUnderstoodAsItsLanguageWritesIt) {
    const Answer eve = 2026y / 12 / 24d;
    for (const auto* text :
         {"2026-12-24", "2026/12/24", "24.12.2026", "24.12.26", "24.12.", "24.12", "24/12", " 24 DEZ ", "24. Dezember",
          "24. Dezember 2026", "Donnerstag, 24. Dezember 2026", "am 24. dez."}) {
        EXPECT_EQ(parseDay(text, german(), today), eve) << text;
    }
    for (const auto* text :
         {"2026-12-24", "12/24/2026", "12/24", "24/12", "24.12.", "24 dec", "dec 24", "december 24th",
          "the 24th of December, 2026", "Thursday, December 24, 2026", "Thu 24 Dec"}) {
        EXPECT_EQ(parseDay(text, english(), today), eve) << text;
    }
}

TEST(DayTextTest, WithoutAYearItIsTheNextSuchDay) {
    expectDays(german(), {{"heute", today},
                          {"MORGEN", 2026y / 11 / 26d},
                          {"übermorgen", 2026y / 11 / 27d},
                          {"mittwoch", 2026y / 12 / 2d},
                          {"Do", std::unexpected(DayFault::notADay)},
                          {"mo", 2026y / 11 / 30d},
                          {"don", 2026y / 11 / 26d},
                          {"25.11.", today},
                          {"24.11.", 2027y / 11 / 24d},
                          {"29.2.", 2028y / 2 / 29d},
                          {"3. märz", 2027y / 3 / 3d},
                          {"3 mrz 27", 2027y / 3 / 3d}});
}

TEST(DayTextTest, WhatIsNoDaySaysWhy) {
    expectDays(english(), {{"", std::unexpected(DayFault::notADay)},
                           {"soon", std::unexpected(DayFault::notADay)},
                           {"24", std::unexpected(DayFault::notADay)},
                           {"1/2/3/4", std::unexpected(DayFault::notADay)},
                           {"2026-12-24 x", std::unexpected(DayFault::notADay)},
                           {"tomorrow 24 dec", std::unexpected(DayFault::notADay)},
                           {"99999999999-1-1", std::unexpected(DayFault::notADay)},
                           {std::string(5000, '1'), std::unexpected(DayFault::notADay)},
                           {"2026-13-01", std::unexpected(DayFault::noSuchDay)},
                           {"30 february", std::unexpected(DayFault::noSuchDay)},
                           {"29.2.2027", std::unexpected(DayFault::noSuchDay)},
                           {"0.1.", std::unexpected(DayFault::noSuchDay)},
                           {"friday 24 december 2026", std::unexpected(DayFault::otherWeekday)}});
}

TEST(DayTextTest, ATimeIsUnderstoodOrSaysWhyNot) {
    const std::vector<std::pair<std::string, std::expected<std::chrono::minutes, TimeFault>>> cases{
        {"18:00", 18h},
        {"8", 8h},
        {" 8:05 ", 8h + 5min},
        {"18.30", 18h + 30min},
        {"18h", 18h},
        {"18h30", 18h + 30min},
        {"6 pm", 18h},
        {"6:30PM", 18h + 30min},
        {"12 am", 0h},
        {"12:15 p.m.", 12h + 15min},
        {"00:00", 0h},
        {"", std::unexpected(TimeFault::notATime)},
        {"noonish", std::unexpected(TimeFault::notATime)},
        {"18:", std::unexpected(TimeFault::notATime)},
        {"18:3", std::unexpected(TimeFault::notATime)},
        {"18:000", std::unexpected(TimeFault::notATime)},
        {"123", std::unexpected(TimeFault::notATime)},
        {"24:00", std::unexpected(TimeFault::noSuchTime)},
        {"18:60", std::unexpected(TimeFault::noSuchTime)},
        {"13 pm", std::unexpected(TimeFault::noSuchTime)},
        {"0 am", std::unexpected(TimeFault::noSuchTime)}};
    for (const auto& [text, answer] : cases) EXPECT_EQ(parseTimeOfDay(text), answer) << text;
}

TEST(DayTextTest, AnyTextGivesADayThatIsOneOrNone) {
    std::mt19937 random{11};
    const std::string letters = "0123456789.-/ ,adecmonth\xC3\xBC\xFF";
    int days = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length) text += letters[random() % letters.size()];
        const auto day = parseDay(text, german(), today);
        days += day ? 1 : 0;
        ASSERT_TRUE(!day || day->ok()) << text;
        const auto time = parseTimeOfDay(text);
        ASSERT_TRUE(!time || (*time >= 0min && *time < 24h)) << text;
    }
    EXPECT_GT(days, 20);
}

} // namespace
} // namespace lumaro
