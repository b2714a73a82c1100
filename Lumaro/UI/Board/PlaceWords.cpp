// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/PlaceWords.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Unicode.h"

#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

/// A name from a stranger's device, on one line and no longer than fonts can bear.
QString oneLine(std::string_view text) {
    constexpr qsizetype mostUnits = 160;
    return qText(firstCharacters(text, Here::maxLabelCharacters)).left(mostUnits).simplified();
}

QString skyWords(Sky sky) {
    switch (sky) {
    case Sky::clear: return Words::tr("a clear sky");
    case Sky::cloud: return Words::tr("clouds");
    case Sky::rain: return Words::tr("rain");
    case Sky::night: return Words::tr("a clear night");
    case Sky::fog: return Words::tr("fog");
    case Sky::snow: return Words::tr("snow");
    case Sky::storm: return Words::tr("a thunderstorm");
    }
    std::unreachable();
}

/// By the Beaufort scale, several of its forces under one word.
QString windForce(double kmh) {
    if (kmh < 6) return Words::tr("hardly any wind");
    if (kmh < 20) return Words::tr("a light breeze");
    if (kmh < 39) return Words::tr("a breeze");
    if (kmh < 62) return Words::tr("a strong wind");
    if (kmh < 89) return Words::tr("a gale");
    return Words::tr("a storm");
}

QString windWords(const Weather& weather) {
    if (!weather.windKmh) return {};
    const double calm = 6;
    auto force = windForce(*weather.windKmh);
    const double from = weather.windDeg.value_or(-1);
    const bool hasSide = from >= 0 && from <= 360 && *weather.windKmh >= calm;
    if (!hasSide) return force;
    const std::array sides{Words::tr("from the north"), Words::tr("from the north-east"),
                           Words::tr("from the east"),  Words::tr("from the south-east"),
                           Words::tr("from the south"), Words::tr("from the south-west"),
                           Words::tr("from the west"),  Words::tr("from the north-west")};
    const auto side = static_cast<std::size_t>(std::lround(from / 45)) % sides.size();
    return Words::tr("%1 %2", "a breeze, from the west").arg(force, sides[side]);
}

QString ageWords(Instant sampledAt, Instant now) {
    const auto minutes = static_cast<std::int64_t>(std::floor(secondsBetween(sampledAt, now) / 60));
    constexpr std::int64_t hour = 60;
    constexpr std::int64_t day = 24 * hour;
    if (minutes < 2) return Words::tr("the weather of this moment");
    if (minutes < hour) {
        return Words::tr("the weather of %n minutes ago", nullptr, static_cast<int>(minutes));
    }
    if (minutes < 2 * hour) return Words::tr("the weather of an hour ago");
    if (minutes < 2 * day) {
        return Words::tr("the weather of %n hours ago", nullptr, static_cast<int>(minutes / hour));
    }
    return Words::tr("the weather of days ago");
}

void addWeather(PlaceWords& words, const Weather& weather, const LiveContext& live) {
    const auto shown = [&](double celsius) { return temperature(celsius, live.isFahrenheit); };
    words.weather = Words::tr("%1, %2", "rain, 17°").arg(skyWords(weather.sky()), shown(weather.tempC));
    if (weather.feelsC) {
        words.weather = Words::tr("%1, feels like %2", "rain, 17°; 15°").arg(words.weather, shown(*weather.feelsC));
    }
    if (weather.loC && weather.hiC) {
        words.range = Words::tr("%1 to %2 today").arg(shown(*weather.loC), shown(*weather.hiC));
    }
    words.wind = windWords(weather);
    words.age = ageWords(weather.sampledAt, live.now);
}

QString digits(double degrees, HerePrecision precision) {
    constexpr double most = 999;
    return QString::number(std::clamp(degrees, -most, most) + 0.0, 'f', decimalsOf(precision));
}

QString titleOf(PartnerID slot, const LiveContext& live) {
    if (live.isMe(slot)) return Words::tr("where you are");
    const auto name = knownName(slot, live);
    return name.isEmpty() ? Words::tr("where they are") : Words::tr("where %1 is").arg(name);
}

} // namespace

QString temperature(double celsius, bool isFahrenheit) {
    constexpr double most = 999; // a stranger's number may be any
    const double shown = isFahrenheit ? celsius * 9 / 5 + 32 : celsius;
    return QStringLiteral("%1°").arg(std::lround(std::clamp(shown, -most, most)));
}

PlaceHurdle placeHurdle(const PlaceState& place, const std::optional<Here>& here) {
    if (place.placeConsent != Consent::yes) return PlaceHurdle::notShared;
    if (here) return PlaceHurdle::none;
    switch (place.locationAccess) {
    case LocationAccess::denied: return PlaceHurdle::denied;
    case LocationAccess::restricted: return PlaceHurdle::restricted;
    case LocationAccess::notDetermined:
    case LocationAccess::authorized: return PlaceHurdle::waiting;
    }
    std::unreachable();
}

QString momentWords(Instant moment, Instant now, const QTimeZone& zone) {
    const auto time = timeAt(moment, zone);
    auto clock = clockText(time);
    if (time.date() == timeAt(now, zone).date()) return clock;
    return Words::tr("%1, %2", "3 may, 14:05")
        .arg(Words::locale().toString(time.date(), QStringLiteral("d MMMM")).toLower(), clock);
}

QString noPlace(PartnerID slot, const LiveContext& live) {
    if (!live.isMe(slot)) {
        return live.partner.isPartnerOnline ? Words::tr("waiting for a fix") : Words::tr("no word from there yet");
    }
    switch (placeHurdle(live.place, live.own.here)) {
    case PlaceHurdle::none: return {};
    case PlaceHurdle::notShared: return Words::tr("let it see where you are");
    case PlaceHurdle::denied:
    case PlaceHurdle::restricted: return Words::tr("location is off · fix");
    case PlaceHurdle::waiting: break;
    }
    const auto& since = live.place.waitingForFixSince;
    if (!since) return Words::tr("waiting for a fix");
    return Words::tr("waiting for a fix · since %1").arg(momentWords(*since, live.now, live.zone));
}

PlaceWords placeWords(const LocationPayload& card, const LiveContext& live) {
    PlaceWords words;
    words.title = titleOf(card.slot, live);
    const auto& here = live.here(card.slot);
    if (!here) {
        words.missing = noPlace(card.slot, live);
        return words;
    }
    words.isThere = true;
    words.label = oneLine(here->label);
    const auto town = oneLine(here->city.value_or(""));
    if (town.compare(words.label, Qt::CaseInsensitive) != 0) words.town = town;
    words.since = Words::tr("since %1").arg(momentWords(here->since, live.now, live.zone));
    if (here->weather) addWeather(words, *here->weather, live);
    const QTimeZone zone{QByteArray::fromStdString(here->tz)};
    // An empty name would be UTC.
    if (!here->tz.empty() && zone.isValid()) {
        words.clock = Words::tr("%1, %2", "15:05, Europe/Lisbon")
                          .arg(clockText(timeAt(live.now, zone)), QString::fromUtf8(zone.id()));
    }
    words.position = digits(here->lat, here->precision) + QStringLiteral(", ") + digits(here->lon, here->precision);
    return words;
}

QString countryName(std::string_view code) {
    const auto territory = QLocale::codeToTerritory(qText(code));
    if (territory == QLocale::AnyTerritory) return qText(code);
    return Words::of(QLocale::territoryToString(territory).toStdString()).toLower();
}

} // namespace lumaro
