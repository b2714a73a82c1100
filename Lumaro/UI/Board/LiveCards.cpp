// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/LiveCards.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Presence/Playback.h"
#include "LumaroCore/Support/Unicode.h"
#include "Widgets/Items/ItemPainting.h"

#include <QtCore/QLocale>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace lumaro {
namespace {

constexpr std::size_t eventsShown = 4;

QString dayWords(CalendarStatus status, PartnerID slot, const LiveContext& live) {
    switch (status) {
    case CalendarStatus::notConnected:
        return live.isMe(slot) ? Words::tr("no calendar yet") : Words::tr("they keep their day to themselves");
    case CalendarStatus::pending: return Words::tr("the day is on its way");
    case CalendarStatus::failed: return Words::tr("the calendar didn't answer");
    case CalendarStatus::connected: return Words::tr("nothing planned");
    }
    return {};
}

QString whoseDay(PartnerID slot, const LiveContext& live) {
    if (live.isMe(slot)) return Words::tr("your day");
    const auto name = knownName(slot, live);
    return name.isEmpty() ? Words::tr("their day") : Words::tr("%1's day").arg(name);
}

void addEvents(DayFace& face, const CalendarDay& day, const QTimeZone& zone) {
    for (const auto& event : day.events) {
        if (face.events.size() == eventsShown) break;
        face.events.push_back(
            {event.allDay ? Words::tr("all day") : clockText(timeAt(event.start, zone)), qText(event.title)});
    }
    face.more = static_cast<int>(day.events.size() - face.events.size());
}

/// What plays for that person; null when nothing does, or what did must be over.
const NowPlaying* trackOf(PartnerID slot, const LiveContext& live) {
    const auto& playing = live.nowPlaying(slot);
    if (!playing || !Playback::hasTrack(*playing) ||
        Playback::hasEnded(*playing, live.nowPlayingHeardAt(slot), live.now))
        return nullptr;
    return &*playing;
}

/// A name out of a stranger's player as it can be shown: on one line, and no longer than fonts can bear. With marks one
/// character may be as long as a book.
QString shownName(const std::string& text) {
    constexpr std::size_t mostCharacters = 200;
    constexpr qsizetype mostUnits = 800;
    const auto start = firstCharacters(text, mostCharacters);
    QString shown = qText(start);
    const bool isCut = start.size() < text.size() || shown.size() > mostUnits;
    shown.truncate(mostUnits);
    if (!shown.isEmpty() && shown.back().isHighSurrogate()) shown.chop(1);
    return isCut ? shown.simplified() + QStringLiteral("…") : shown.simplified();
}

int armStep(const NowPlaying& playing, Instant now) {
    constexpr double ofUnknownLength = 0.2; // in the first third
    return static_cast<int>(Playback::progress(playing, now).value_or(ofUnknownLength) * MusicFace::armSteps);
}

/// "3:45", or "1:03:45" from an hour on.
QString minutesAndSeconds(std::int64_t milliseconds) {
    const auto seconds = milliseconds / 1000;
    const auto two = [](std::int64_t count) { return QStringLiteral("%1").arg(count, 2, 10, QLatin1Char{'0'}); };
    const auto minutes = seconds / 60;
    if (minutes < 60) return QStringLiteral("%1:%2").arg(minutes).arg(two(seconds % 60));
    return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(two(minutes % 60), two(seconds % 60));
}

} // namespace

QString knownName(PartnerID slot, const LiveContext& live) {
    const auto name = live.names.find(slot);
    return name == live.names.end() ? QString{} : qText(name->second);
}

QString personName(PartnerID slot, const LiveContext& live) {
    if (live.isMe(slot)) return Words::tr("you");
    const auto name = knownName(slot, live);
    return name.isEmpty() ? Words::tr("they") : name;
}

MusicFace musicFace(const NowPlayingSlotPayload& card, double scale, const LiveContext& live) {
    MusicFace face;
    const auto* const playing = trackOf(card.slot, live);
    if (playing == nullptr) {
        const bool isKeptBack = live.isMe(card.slot) && live.music.musicConsent != Consent::yes;
        face.words = isKeptBack ? Words::tr("share what i'm listening to") : Words::tr("nothing playing");
        return face;
    }
    face.state = playing->isPlaying ? MusicFace::State::playing : MusicFace::State::paused;
    face.title = shownName(playing->title);
    face.artist = shownName(playing->artist);
    face.armStep = armStep(*playing, live.now);
    if (!playing->isPlaying) face.words = Words::tr("paused");
    if (const auto& cover = live.cover(card.slot)) {
        const double side = coverSide({BoardSpec::musicDiskSize.width, BoardSpec::musicDiskSize.height}) * scale;
        face.cover = live.picture(*cover, {side, side});
    }
    return face;
}

std::optional<Instant> nextChangeOf(const NowPlayingSlotPayload& card, const LiveContext& live) {
    const auto* const playing = trackOf(card.slot, live);
    if (playing == nullptr) return std::nullopt;
    const auto end = Playback::endsAt(*playing, live.nowPlayingHeardAt(card.slot));
    const auto part = (armStep(*playing, live.now) + 1.0) / MusicFace::armSteps;
    const auto step = Playback::reachesAt(*playing, std::min(part, 1.0), live.now);
    return step && end ? std::min(*step, *end) : end;
}

TrackWords trackWords(const NowPlayingSlotPayload& card, const LiveContext& live) {
    const auto* const playing = trackOf(card.slot, live);
    if (playing == nullptr) return {};
    constexpr std::int64_t longestMs = std::int64_t{100} * 3'600'000; // a stream may call itself endless by any number
    auto position = minutesAndSeconds(Playback::positionMs(*playing, live.now));
    if (playing->durationMs > 0 && playing->durationMs < longestMs) {
        position = Words::tr("%1 of %2", "1:23 of 3:45").arg(position, minutesAndSeconds(playing->durationMs));
    }
    if (!playing->isPlaying) position = Words::tr("%1 · paused").arg(position);
    return {.isThere = true,
            .isPlaying = playing->isPlaying,
            .title = shownName(playing->title),
            .artist = shownName(playing->artist),
            .position = position};
}

DayFace dayFace(const CalendarPayload& card, const LiveContext& live) {
    DayFace face;
    const auto zone = zoneOf(card.slot, live).value_or(live.zone);
    const auto date = timeAt(live.now, zone).date();
    face.weekday = Words::locale().dayName(date.dayOfWeek()).toLower();
    face.day = QString::number(date.day());
    face.month = Words::locale().monthName(date.month()).toLower();
    face.whose = whoseDay(card.slot, live);
    const auto status = live.partner.calendarStatus.find(card.slot);
    const auto known = live.partner.calendar.find(card.slot);
    const bool isToday =
        known != live.partner.calendar.end() && qText(known->second.date) == date.toString(Qt::ISODate);
    if (isToday) addEvents(face, known->second, zone);
    if (face.events.empty()) {
        const auto state = status == live.partner.calendarStatus.end() ? CalendarStatus::notConnected : status->second;
        face.words =
            dayWords(state == CalendarStatus::connected && !isToday ? CalendarStatus::pending : state, card.slot, live);
    }
    return face;
}

} // namespace lumaro
