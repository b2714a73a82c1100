// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/DayText.h"
#include "LumaroCore/Support/WallClock.h"

#include <QtCore/QDate>
#include <QtCore/QList>
#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTime>
#include <QtCore/QTimeZone>
#include <QtCore/QVariantList>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace lumaro {

/// One day of the month that is open.
struct CountdownDay {
    Q_GADGET
    QML_VALUE_TYPE(countdownDay)
    Q_PROPERTY(int number MEMBER number CONSTANT)
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(bool isInMonth MEMBER isInMonth CONSTANT)
    Q_PROPERTY(bool isToday MEMBER isToday CONSTANT)
    Q_PROPERTY(bool isChosen MEMBER isChosen CONSTANT)
    Q_PROPERTY(bool isPast MEMBER isPast CONSTANT)

public:
    int number = 0;
    QString name; ///< in full, with what a screen reader is to say of it
    bool isInMonth = false;
    bool isToday = false;
    bool isChosen = false;
    bool isPast = false;

    bool operator==(const CountdownDay&) const = default;
};

/// When a countdown ends, while a person decides: typed, or picked from a month and a clock; each follows the other.
/// Days and times are those of this computer's zone.
class CountdownChoices final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("the editor has it")
    Q_PROPERTY(QString day READ day WRITE setDay NOTIFY changed)
    Q_PROPERTY(QString time READ time WRITE setTime NOTIFY changed)
    /// What is wrong with what was typed; empty when nothing is.
    Q_PROPERTY(QString dayFault READ dayFault NOTIFY changed)
    Q_PROPERTY(QString timeFault READ timeFault NOTIFY changed)
    /// The moment in words; and what is odd about it, such as that it has been.
    Q_PROPERTY(QString meaning READ meaning NOTIFY changed)
    Q_PROPERTY(QString warning READ warning NOTIFY changed)
    Q_PROPERTY(bool isGood READ isGood NOTIFY changed)
    Q_PROPERTY(double moment READ moment NOTIFY changed)
    Q_PROPERTY(int hour READ hour NOTIFY changed)
    Q_PROPERTY(int minute READ minute NOTIFY changed)
    Q_PROPERTY(QString month READ month NOTIFY changed)
    Q_PROPERTY(QStringList weekdays READ weekdays CONSTANT)
    /// Six weeks, from the first day of the week that the month begins in.
    Q_PROPERTY(QVariantList days READ dayValues NOTIFY changed)

public:
    /// The clock outlives the choices. Days may be typed as the locale has them, and its weeks begin where it says.
    CountdownChoices(WallClock& clock, const QLocale& locale, const QTimeZone& zone, QObject* parent = nullptr);

    const QString& day() const { return day_; }
    const QString& time() const { return time_; }
    void setDay(const QString& day);
    void setTime(const QString& time);
    QString dayFault() const;
    QString timeFault() const;
    QString meaning() const;
    QString warning() const;
    bool isGood() const { return date_ && clockTime_; }
    /// In milliseconds since 1970; NaN while there is none.
    double moment() const;
    int hour() const { return clockTime_ ? clockTime_->hour() : 0; }
    int minute() const { return clockTime_ ? clockTime_->minute() : 0; }
    QString month() const;
    QStringList weekdays() const;
    QList<CountdownDay> days() const;
    QVariantList dayValues() const;

    /// So many days from today, at six in the evening.
    Q_INVOKABLE void inDays(int days);
    /// A moment that is set already, in milliseconds since 1970.
    Q_INVOKABLE void begin(double ms);
    /// The day at that place of `days`.
    Q_INVOKABLE void pick(int index);
    /// Other days and months, from the one that is chosen.
    Q_INVOKABLE void moveDay(int days);
    Q_INVOKABLE void moveMonth(int months);
    /// Opens another month without choosing a day in it.
    Q_INVOKABLE void turnPage(int months);
    Q_INVOKABLE void moveHour(int hours);
    Q_INVOKABLE void moveMinute(int minutes);

Q_SIGNALS:
    void changed();

private:
    /// A moment on the clocks of the zone. One that they skip is moved on by as much as they are.
    struct Resolved {
        qint64 ms = 0;
        bool isSkipped = false;
    };

    QDate today() const;
    QDate firstShown() const;
    void choose(QDate date);
    void setClock(QTime time);
    std::optional<Resolved> resolved() const;

    WallClock& clock_;
    QLocale locale_;
    QTimeZone zone_;
    DayWords words_;
    QString day_;
    QString time_;
    std::optional<QDate> date_;
    std::optional<QTime> clockTime_;
    std::optional<DayFault> dayFault_;
    std::optional<TimeFault> timeFault_;
    QDate page_; ///< the first of the month that is open
};

} // namespace lumaro
