// SPDX-License-Identifier: Apache-2.0
// The two cards that show places: the window and the clocks.
#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/LiveCards.h"
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Board/PlaceWords.h"
#include "Lumaro/UI/Board/SkyViews.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/BoardSpec.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumaro {
namespace {

/// To the minute, as clocks show it.
double hourOf(const QDateTime& time) {
    return time.time().hour() + time.time().minute() / 60.0;
}

/// Where no zone is known: by the sun, to the minute.
double hourBySun(Instant now, double longitude) {
    const double minutes = std::floor(secondsBetween(Instant{}, now) / 60) + std::round(longitude * 4);
    const double rest = std::fmod(minutes, 1'440);
    return (rest < 0 ? rest + 1'440 : rest) / 60;
}

/// Where they are, if that is a point on the earth.
std::optional<Coordinates> pointOf(const std::optional<Here>& here) {
    if (!here || !isOnEarth({here->lat, here->lon})) return std::nullopt;
    return Coordinates{here->lat, here->lon};
}

SkyView viewOf(const Here& here, const std::optional<QTimeZone>& zone, const LiveContext& live) {
    const auto point = pointOf(here);
    const double hour = zone ? hourOf(timeAt(live.now, *zone)) : hourBySun(live.now, point ? point->longitude : 0);
    if (!point) return viewAtHour(hour, here.weather, {});
    return viewFrom(*point, live.now, hour, here.weather, live.scenery(*point));
}

ClocksFace::Side side(PartnerID slot, const LiveContext& live) {
    ClocksFace::Side side;
    side.name = personName(slot, live);
    const auto& here = live.here(slot);
    const auto zone = zoneOf(slot, live);
    if (here)
        side.view = viewOf(*here, zone, live);
    else if (zone)
        side.view = viewAtHour(hourOf(timeAt(live.now, *zone)), std::nullopt, {});
    if (here && here->weather) side.sky = side.view->sky;
    if (zone)
        side.time = clockText(timeAt(live.now, *zone));
    else
        side.words = Words::tr("hours not shared");
    return side;
}

QString hoursBetween(const QTimeZone& mine, const QTimeZone& theirs, Instant now) {
    const auto time = timeAt(now, mine);
    const int minutes = (theirs.offsetFromUtc(time) - mine.offsetFromUtc(time)) / 60;
    if (minutes == 0) return Words::tr("the same time");
    const bool isAhead = minutes > 0;
    const int size = std::abs(minutes);
    if (size == 60) return isAhead ? Words::tr("1 hour ahead") : Words::tr("1 hour behind");
    if (size % 60 == 0) {
        return isAhead ? Words::tr("%n hours ahead", nullptr, size / 60)
                       : Words::tr("%n hours behind", nullptr, size / 60);
    }
    const auto hours = QString::number(size / 60.0, 'g', 4);
    return (isAhead ? Words::tr("%1 hours ahead") : Words::tr("%1 hours behind")).arg(hours);
}

QString dayThere(const QTimeZone& mine, const QTimeZone& theirs, Instant now) {
    const auto days = timeAt(now, mine).date().daysTo(timeAt(now, theirs).date());
    if (days == 0) return {};
    return days > 0 ? Words::tr("tomorrow") : Words::tr("yesterday");
}

} // namespace

Scenery LiveContext::scenery(Coordinates point) const {
    return sceneryAt ? sceneryAt(point) : sceneryUnknownAt(point);
}

WindowFace windowFace(const LocationPayload& card, const LiveContext& live) {
    WindowFace face;
    const auto& here = live.here(card.slot);
    const auto zone = zoneOf(card.slot, live);
    if (zone) face.time = clockText(timeAt(live.now, *zone));
    if (!here) {
        face.place = personName(card.slot, live);
        face.words = noPlace(card.slot, live);
        return face;
    }
    face.view = viewOf(*here, zone, live);
    face.place = qText(here->label);
    // The partner's alone is drawn by the server's page.
    if (!live.isMe(card.slot) && live.city.city) {
        face.city =
            live.picture(*live.city.city, {BoardSpec::locationFrameSize.width, BoardSpec::locationFrameSize.height});
    }
    const auto itsZone = zone.value_or(live.zone);
    const auto age = ageText(here->sampledAt, live.now, itsZone);
    if (!age.isEmpty()) face.words = Words::tr("as of %1").arg(age);
    if (!here->weather) return face;
    face.sky = face.view->sky;
    face.temperature = temperature(here->weather->tempC, live.isFahrenheit);
    const auto weatherAge = ageText(here->weather->sampledAt, live.now, itsZone);
    if (!weatherAge.isEmpty()) face.weatherAge = Words::tr("weather as of %1").arg(weatherAge);
    return face;
}

ClocksFace clocksFace(const TimezonesPayload& card, const LiveContext& live) {
    ClocksFace face;
    const auto partner = other(live.me);
    face.mine = side(live.me, live);
    face.theirs = side(partner, live);
    if (const auto zone = zoneOf(partner, live)) {
        face.between = hoursBetween(live.zone, *zone, live.now);
        face.day = dayThere(live.zone, *zone, live.now);
    } else if (!live.own.zone && !live.own.here) {
        face.between = Words::tr("let them see your hours");
    }
    for (auto& [side, slot] : {std::pair{&face.theirs, partner}, std::pair{&face.mine, live.me}}) {
        const auto& here = live.here(slot);
        if (here && here->weather && !side->time.isEmpty()) {
            side->words = temperature(here->weather->tempC, card.units == TemperatureUnit::fahrenheit);
        }
    }
    return face;
}

} // namespace lumaro
