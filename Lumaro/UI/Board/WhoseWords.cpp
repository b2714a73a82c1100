// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/WhoseWords.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/LiveCards.h"
#include "Lumaro/UI/Board/LiveTime.h"
#include "LumaroCore/Support/Overloaded.h"

#include <QtCore/QLocale>

#include <utility>

namespace lumaro {
namespace {

/// What is missing on the partner's card, and what might be asked of them.
struct Missing {
    QString words{};
    QString question{};
};

QString when(Instant instant, const LiveContext& live) {
    const auto time = timeAt(instant, live.zone);
    const auto today = timeAt(live.now, live.zone).date();
    auto clock = time.toString(QStringLiteral("H:mm"));
    const auto days = time.date().daysTo(today);
    if (days == 0) return clock;
    const auto locale = Words::locale();
    constexpr qint64 week = 7;
    if (days > 0 && days < week) {
        return Words::tr("%1 %2", "tuesday 9:14").arg(locale.dayName(time.date().dayOfWeek()).toLower(), clock);
    }
    const bool isThisYear = time.date().year() == today.year();
    return locale.toString(time.date(), isThisYear ? QStringLiteral("d MMMM") : QStringLiteral("d MMMM yyyy"))
        .toLower();
}

/// The one text with the partner's name in it, or the other as long as that is not known.
QString ofThem(const QString& named, const QString& unnamed, const LiveContext& live) {
    const auto name = knownName(other(live.me), live);
    return name.isEmpty() ? unnamed : named.arg(name);
}

Missing missingMusic(const NowPlayingSlotPayload& card, const LiveContext& live) {
    if (musicFace(card, 1, live).state != MusicFace::State::none) return {};
    return {Words::tr("nothing plays there, or it isn't shared. that's a switch in their settings."),
            Words::tr("what are you listening to? (settings, “what you share”)")};
}

Missing missingPlace(const LocationPayload& card, const LiveContext& live) {
    if (live.here(card.slot)) return {};
    return {ofThem(Words::tr("%1 hasn't said where they are. that's a switch in their settings."),
                   Words::tr("they haven't said where they are. that's a switch in their settings."), live),
            Words::tr("where are you? (settings, “where you are”)")};
}

Missing missingHours(const LiveContext& live) {
    if (zoneOf(other(live.me), live)) return {};
    return {ofThem(Words::tr("%1 hasn't shared their hours. that's a switch in their settings."),
                   Words::tr("they haven't shared their hours. that's a switch in their settings."), live),
            Words::tr("what time is it where you are? (settings, “our hours”)")};
}

Missing missingDay(const CalendarPayload& card, const LiveContext& live) {
    const auto status = live.partner.calendarStatus.find(card.slot);
    const bool isNone = status == live.partner.calendarStatus.end() || status->second == CalendarStatus::notConnected;
    return {isNone ? Words::tr("calendars can't be connected here yet. the day shows itself alone.") : QString{}, {}};
}

Missing missingOn(const BoardItem& item, const LiveContext& live) {
    if (const auto* const day = item.payload.as<CalendarPayload>()) return missingDay(*day, live);
    if (item.payload.as<TimezonesPayload>() != nullptr) return missingHours(live);
    const auto* const music = item.payload.as<NowPlayingSlotPayload>();
    if (music != nullptr && !live.isMe(music->slot)) return missingMusic(*music, live);
    const auto* const place = item.payload.as<LocationPayload>();
    if (place != nullptr && !live.isMe(place->slot)) return missingPlace(*place, live);
    return {};
}

} // namespace

QString whoseAndWhen(const BoardItem& item, const LiveContext& live) {
    const auto words =
        Words::tr("%1, %2", "bo, 9:14").arg(personName(item.creator(), live), when(item.createdAt, live));
    return isSeen(item, live) ? Words::tr("%1 · seen").arg(words) : words;
}

bool isSeen(const BoardItem& item, const LiveContext& live) {
    const auto& seen = live.partner.seen;
    return live.isMe(item.creator()) && seen && item.createdAt <= *seen;
}

QString whatTheyCanDo(const BoardItem& item, const LiveContext& live) {
    return missingOn(item, live).words;
}

QString questionToThem(const BoardItem& item, const LiveContext& live) {
    return missingOn(item, live).question;
}

} // namespace lumaro
