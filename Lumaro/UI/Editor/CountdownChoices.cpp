// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/CountdownChoices.h"

#include "DesignSystem/Words.h"

#include <QtCore/QDateTime>

#include <chrono>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

const QTime evening{18, 0};
constexpr int shownDays = 42;
// Outside of these the months of a calendar, and an instant's microseconds, are of no use to anybody.
constexpr int firstYear = 1900;
constexpr int lastYear = 9000;

template <class Name>
std::vector<std::string> names(const QLocale& locale, Name name) {
    std::vector<std::string> all;
    for (const auto& spoken : {locale, Words::locale(), QLocale{QLocale::English}}) {
        for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat}) {
            all.push_back(name(spoken, format).toStdString());
        }
    }
    return all;
}

// The person's language, and English, which the program speaks.
DayWords wordsOf(const QLocale& locale) {
    DayWords words;
    for (int month = 1; month <= 12; ++month) {
        auto& all = words.months.at(static_cast<std::size_t>(month - 1));
        all = names(locale, [&](const QLocale& spoken, auto format) { return spoken.monthName(month, format); });
        all.push_back(locale.standaloneMonthName(month).toStdString());
    }
    for (int day = 1; day <= 7; ++day) {
        words.weekdays.at(static_cast<std::size_t>(day - 1)) =
            names(locale, [&](const QLocale& spoken, auto format) { return spoken.dayName(day, format); });
    }
    words.today = {"today", Words::tr("today").toStdString()};
    words.tomorrow = {"tomorrow", Words::tr("tomorrow").toStdString()};
    const QString order = locale.dateFormat(QLocale::ShortFormat);
    words.isMonthFirst = order.indexOf(QLatin1Char{'M'}) < order.indexOf(QLatin1Char{'d'});
    return words;
}

bool isShowable(QDate date) {
    return date.isValid() && date.year() >= firstYear && date.year() <= lastYear;
}

QString spoken(QDate date) {
    return Words::locale().toString(date, QStringLiteral("dddd, d MMMM yyyy")).toLower();
}

} // namespace

CountdownChoices::CountdownChoices(WallClock& clock, const QLocale& locale, const QTimeZone& zone, QObject* parent)
    : QObject(parent), clock_(clock), locale_(locale), zone_(zone), words_(wordsOf(locale_)) {
    inDays(7);
}

QDate CountdownChoices::today() const {
    const auto now = std::chrono::floor<std::chrono::milliseconds>(clock_.now()).time_since_epoch().count();
    return QDateTime::fromMSecsSinceEpoch(now, zone_).date();
}

void CountdownChoices::setDay(const QString& day) {
    if (day == day_) return;
    day_ = day;
    const QDate now = today();
    const auto parsed = parseDay(day.toStdString(), words_,
                                 {std::chrono::year{now.year()}, std::chrono::month{static_cast<unsigned>(now.month())},
                                  std::chrono::day{static_cast<unsigned>(now.day())}});
    const QDate date = parsed ? QDate{static_cast<int>(parsed->year()), static_cast<int>(unsigned{parsed->month()}),
                                      static_cast<int>(unsigned{parsed->day()})}
                              : QDate{};
    date_.reset();
    dayFault_.reset();
    if (isShowable(date)) {
        date_ = date;
        page_ = QDate{date.year(), date.month(), 1};
    } else {
        dayFault_ = parsed ? DayFault::noSuchDay : parsed.error();
    }
    Q_EMIT changed();
}

void CountdownChoices::setTime(const QString& time) {
    if (time == time_) return;
    time_ = time;
    clockTime_.reset();
    timeFault_.reset();
    // A day without a time begins when it begins.
    const auto parsed = time.trimmed().isEmpty() ? std::chrono::minutes{} : parseTimeOfDay(time.toStdString());
    if (parsed) {
        clockTime_ = QTime{0, 0}.addSecs(static_cast<int>(std::chrono::seconds{*parsed}.count()));
    } else {
        timeFault_ = parsed.error();
    }
    Q_EMIT changed();
}

QString CountdownChoices::dayFault() const {
    if (!dayFault_) return {};
    switch (*dayFault_) {
    case DayFault::notADay: return Words::tr("a day like 24 dec, 2026-12-24 or friday");
    case DayFault::noSuchDay: return Words::tr("there is no such day");
    case DayFault::otherWeekday: return Words::tr("that day is on another weekday");
    }
    std::unreachable();
}

QString CountdownChoices::timeFault() const {
    if (!timeFault_) return {};
    switch (*timeFault_) {
    case TimeFault::notATime: return Words::tr("a time like 18:00");
    case TimeFault::noSuchTime: return Words::tr("no clock shows that");
    }
    std::unreachable();
}

std::optional<CountdownChoices::Resolved> CountdownChoices::resolved() const {
    if (!date_ || !clockTime_) return std::nullopt;
    const qint64 asUtc = QDateTime{*date_, *clockTime_, Qt::UTC}.toMSecsSinceEpoch();
    constexpr qint64 aDay = qint64{24} * 3600 * 1000;
    const auto from = [&](qint64 near) {
        return asUtc - qint64{zone_.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(near, Qt::UTC))} * 1000;
    };
    // Of an hour that comes twice, the first.
    const qint64 before = from(asUtc - aDay);
    for (const qint64 ms : {before, from(asUtc + aDay)}) {
        const auto back = QDateTime::fromMSecsSinceEpoch(ms, zone_);
        if (back.date() == *date_ && back.time() == *clockTime_) return Resolved{ms, false};
    }
    return Resolved{before, true};
}

double CountdownChoices::moment() const {
    const auto found = resolved();
    return found ? static_cast<double>(found->ms) : std::numeric_limits<double>::quiet_NaN();
}

QString CountdownChoices::meaning() const {
    const auto found = resolved();
    if (!found) return {};
    const auto moment = QDateTime::fromMSecsSinceEpoch(found->ms, zone_);
    return Words::tr("%1, at %2").arg(spoken(moment.date()), moment.time().toString(QStringLiteral("HH:mm")));
}

QString CountdownChoices::warning() const {
    const auto found = resolved();
    if (!found) return {};
    if (Instant{std::chrono::milliseconds{found->ms}} <= clock_.now()) return Words::tr("that day has been.");
    if (found->isSkipped) return Words::tr("the clocks skip that hour; it counts to the next one.");
    return {};
}

// The month.

QString CountdownChoices::month() const {
    return (Words::locale().standaloneMonthName(page_.month()) + QLatin1Char{' '} + QString::number(page_.year()))
        .toLower();
}

QStringList CountdownChoices::weekdays() const {
    QStringList all;
    for (int i = 0; i < 7; ++i) {
        all.append(Words::locale()
                       .standaloneDayName((locale_.firstDayOfWeek() + i - 1) % 7 + 1, QLocale::ShortFormat)
                       .toLower());
    }
    return all;
}

QDate CountdownChoices::firstShown() const {
    return page_.addDays(-((page_.dayOfWeek() - locale_.firstDayOfWeek() + 7) % 7));
}

QList<CountdownDay> CountdownChoices::days() const {
    QList<CountdownDay> all;
    const QDate first = firstShown();
    const QDate now = today();
    for (int i = 0; i < shownDays; ++i) {
        const QDate date = first.addDays(i);
        QString name = spoken(date);
        if (date == now) name = Words::tr("%1, today").arg(name);
        all.append({.number = date.day(),
                    .name = name,
                    .isInMonth = date.month() == page_.month(),
                    .isToday = date == now,
                    .isChosen = date_ == date,
                    .isPast = date < now});
    }
    return all;
}

QVariantList CountdownChoices::dayValues() const {
    QVariantList values;
    for (const auto& day : days()) values.append(QVariant::fromValue(day));
    return values;
}

void CountdownChoices::choose(QDate date) {
    if (isShowable(date)) setDay(Words::locale().toString(date, QStringLiteral("d MMM yyyy")).toLower());
}

void CountdownChoices::setClock(QTime time) {
    setTime(time.toString(QStringLiteral("HH:mm")));
}

void CountdownChoices::inDays(int days) {
    setClock(evening);
    choose(today().addDays(days));
}

void CountdownChoices::begin(double ms) {
    const auto moment = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms), zone_);
    setClock(moment.time());
    choose(moment.date());
}

void CountdownChoices::pick(int index) {
    if (index >= 0 && index < shownDays) choose(firstShown().addDays(index));
}

void CountdownChoices::moveDay(int days) {
    choose(date_.value_or(today()).addDays(days));
}

void CountdownChoices::moveMonth(int months) {
    choose(date_.value_or(today()).addMonths(months));
}

void CountdownChoices::turnPage(int months) {
    const QDate page = page_.addMonths(months);
    if (!isShowable(page)) return;
    page_ = page;
    Q_EMIT changed();
}

void CountdownChoices::moveHour(int hours) {
    setClock(clockTime_.value_or(evening).addSecs(hours * 3600));
}

void CountdownChoices::moveMinute(int minutes) {
    // To whole fives first, the way the hand goes.
    const QTime time = clockTime_.value_or(evening);
    const int past = std::abs(minutes) > 1 ? time.minute() % 5 : 0;
    const int step = past == 0 ? minutes : (minutes > 0 ? minutes - past : -past);
    setClock(time.addSecs(step * 60));
}

} // namespace lumaro
