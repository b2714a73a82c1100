// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/CountdownChoices.h"

#include "Tests/Fakes/ManualClock.h"

#include <QtCore/QDateTime>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

class CountdownChoicesTest : public testing::Test {
protected:
    QDateTime moment() const { return QDateTime::fromMSecsSinceEpoch(qint64(choices.moment()), Qt::UTC); }
    static QDateTime utc(int year, int month, int day, int hour, int minute = 0) {
        return {QDate{year, month, day}, QTime{hour, minute}, Qt::UTC};
    }

    ManualSleeper sleeper;
    ManualClock clock{sleeper, Instant{std::chrono::sys_days{2026y / 3 / 10d} + 12h}};
    CountdownChoices choices{clock, QLocale{QLocale::German, QLocale::Germany}, QTimeZone{"Europe/Berlin"}};
};

TEST_F(CountdownChoicesTest, AMomentIsThatOfThisZoneAndNoHourIsLost) {
    choices.setDay(QStringLiteral(u"25 märz"));
    choices.setTime(QStringLiteral(u"18.00"));
    EXPECT_EQ(moment(), utc(2026, 3, 25, 17));
    EXPECT_EQ(choices.warning(), QString{});
    // Clocks go from 2 to 3.
    choices.setDay(QStringLiteral(u"29.3."));
    choices.setTime(QStringLiteral(u"2:30"));
    EXPECT_EQ(moment(), utc(2026, 3, 29, 1, 30));
    EXPECT_EQ(choices.warning(), u"the clocks skip that hour; it counts to the next one.");
    EXPECT_TRUE(choices.meaning().endsWith(QStringLiteral(u"29 march 2026, at 03:30")))
        << choices.meaning().toStdString();
    choices.setTime(QStringLiteral(u"18:00"));
    EXPECT_EQ(moment(), utc(2026, 3, 29, 16));
    // From 3 to 2: half past two comes twice.
    choices.setDay(QStringLiteral(u"2026-10-25"));
    choices.setTime(QStringLiteral(u"2:30"));
    EXPECT_EQ(moment(), utc(2026, 10, 25, 0, 30));
    choices.setDay(QStringLiteral(u"gestern"));
    EXPECT_TRUE(std::isnan(choices.moment()));
    EXPECT_EQ(choices.timeFault(), QString{});
    choices.setDay(QStringLiteral(u"2026-03-10"));
    choices.setTime(QStringLiteral(u"12:59"));
    EXPECT_EQ(choices.warning(), u"that day has been.");
}

TEST_F(CountdownChoicesTest, TheMonthBeginsItsWeeksAsTheLocaleDoes) {
    choices.setDay(QStringLiteral(u"2026-03-31"));
    EXPECT_EQ(choices.weekdays().front(), u"mon");
    EXPECT_EQ(choices.days()[0].name, u"monday, 23 february 2026");
    EXPECT_TRUE(choices.days()[36].isChosen);
    EXPECT_TRUE(choices.days()[15].isToday);
    EXPECT_EQ(choices.days()[15].name, u"tuesday, 10 march 2026, today");
    choices.moveMonth(-1);
    EXPECT_EQ(choices.day(), u"28 feb 2026");
    choices.turnPage(1);
    EXPECT_EQ(choices.month(), u"march 2026");
    EXPECT_EQ(choices.day(), u"28 feb 2026");
    for (int i = 0; i < 4; ++i) choices.moveMinute(5);
    choices.moveHour(-19);
    EXPECT_EQ(choices.time(), u"23:20");
    const CountdownChoices american{clock, QLocale{QLocale::English, QLocale::UnitedStates}, QTimeZone::utc()};
    EXPECT_EQ(american.weekdays().front(), u"sun");
}

} // namespace
} // namespace lumaro
