// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/SpokenItem.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Board/WhoseWords.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Unicode.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>
#include <QtCore/QStringList>

namespace lumaro {
namespace {

QDate dayOf(Instant instant, const QTimeZone& zone) {
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(instant).time_since_epoch().count();
    return QDateTime::fromMSecsSinceEpoch(milliseconds, zone).date();
}

QString since(Instant instant, const LiveContext& live) {
    const auto day = dayOf(instant, live.zone);
    const auto days = day.daysTo(dayOf(live.now, live.zone));
    if (days <= 0) return Words::tr("pinned today");
    if (days == 1) return Words::tr("pinned yesterday");
    return Words::tr("pinned on %1").arg(Words::locale().toString(day, QStringLiteral("d MMMM")).toLower());
}

QString quoted(const QString& text) {
    return text.isEmpty() ? QString{} : QStringLiteral("'%1'").arg(text.simplified());
}

/// The parts that are not empty, as one sentence.
QString joined(std::initializer_list<QString> parts) {
    QStringList said;
    for (const auto& part : parts) {
        if (!part.isEmpty()) said.append(part);
    }
    return said.join(QStringLiteral(", "));
}

QString day(const DayFace& face) {
    QStringList said{joined({face.whose, face.weekday, face.day + QLatin1Char{' '} + face.month, face.words})};
    for (const auto& event : face.events) said.append(event.time + QLatin1Char{' '} + event.title);
    return said.join(QStringLiteral(", "));
}

QString music(const MusicFace& face, PartnerID slot, const LiveContext& live) {
    const auto name = knownName(slot, live);
    auto whose = name.isEmpty() ? Words::tr("their music") : Words::tr("%1's music").arg(name);
    if (live.isMe(slot)) whose = Words::tr("your music");
    const bool isPlaying = face.state == MusicFace::State::playing;
    return joined({whose, quoted(face.title), face.artist, isPlaying ? Words::tr("playing") : face.words});
}

QString clock(const ClocksFace::Side& side) {
    return joined({side.name, side.time, side.words});
}

/// What the sky tells of the hour, and the moon in it; nothing more where the weather says "night".
QString lightIn(const WindowFace& face) {
    if (!face.view) return {};
    const auto& view = *face.view;
    constexpr double civilTwilight = -6;
    QString light;
    if (view.sunAltitude >= 0)
        light = Words::tr("daylight");
    else if (view.sunAltitude > civilTwilight)
        light = view.sunAzimuth < 180 ? Words::tr("dawn") : Words::tr("dusk");
    else if (face.sky != Sky::night)
        light = Words::tr("night");
    const bool isMoonSeen = view.sunAltitude < 0 && view.moon.altitude > 0 && view.clouds.low < 0.7;
    if (!isMoonSeen || view.moon.lit < 0.05) return light;
    return joined({light, view.moon.lit > 0.95 ? Words::tr("full moon")
                          : view.moon.isWaxing ? Words::tr("waxing moon")
                                               : Words::tr("waning moon")});
}

} // namespace

QString spoken(const BoardItem& item, const ItemFace& face, const LiveContext& live) {
    const auto creator = personName(item.creator(), live);
    const auto locked = item.isLocked ? Words::tr("locked") : QString{};
    const auto pinned = [&](const QString& what, const QString& text) {
        const auto whose = Words::tr("%1 from %2", "a photo, a person").arg(what, creator);
        const auto seen = isSeen(item, live) ? Words::tr("seen") : QString{};
        return joined({whose, since(item.createdAt, live), text, seen, locked});
    };
    // What a card tells comes first.
    const auto card = [&](const QString& told) {
        return joined({told, Words::tr("from %1", "a person").arg(creator), since(item.createdAt, live), locked});
    };
    return std::visit(
        Overloaded{
            [&](const NoteFace& it) {
                const auto* const note = item.payload.as<NotePayload>();
                const auto end =
                    note != nullptr && note->expiresAt ? comesDown(*note->expiresAt, live.now, live.zone) : QString{};
                return pinned(it.isKept ? Words::tr("kept note") : Words::tr("note"),
                              joined({quoted(qText(std::string_view{it.text.plainText()})), end}));
            },
            [&](const PhotoFace& it) { return pinned(Words::tr("photo"), joined({quoted(it.caption), it.words})); },
            [&](const StickerFace& it) { return pinned(Words::tr("sticker"), it.words); },
            [&](const DoodleFace&) { return pinned(Words::tr("doodle"), {}); },
            [&](const CountdownFace& it) {
                return pinned(Words::tr("countdown"),
                              joined({quoted(it.label), it.figure + QLatin1Char{' '} + it.unit}));
            },
            [&](const MusicFace& it) {
                const auto* const record = item.payload.as<NowPlayingSlotPayload>();
                return card(music(it, record != nullptr ? record->slot : item.creator(), live));
            },
            [&](const WindowFace& it) {
                const auto* const window = item.payload.as<LocationPayload>();
                const auto slot = window != nullptr ? window->slot : item.creator();
                const auto name = knownName(slot, live);
                auto whose = name.isEmpty() ? Words::tr("their window") : Words::tr("%1's window").arg(name);
                if (live.isMe(slot)) whose = Words::tr("your window");
                return card(
                    joined({whose, it.place, it.time, it.temperature, it.sky ? Words::of(nameOf(*it.sky)) : QString{},
                            lightIn(it), it.words, it.weatherAge}));
            },
            [&](const ClocksFace& it) {
                return card(joined({Words::tr("clocks"), clock(it.mine), clock(it.theirs), it.between, it.day}));
            },
            [&](const DayFace& it) { return card(day(it)); },
            [&](const BlockFace& it) { return card(joined({Words::tr("block card"), it.figure, it.who})); }},
        face.value());
}

QString itemWords(const BoardItem& item) {
    const auto with = [](const QString& what, std::string_view text) {
        constexpr std::size_t beginning = 80;
        const auto start = firstCharacters(text, beginning);
        const auto end = start.size() < text.size() ? QStringLiteral("…") : QString{};
        return joined({what, quoted(qText(start) + end)});
    };
    return std::visit(
        Overloaded{
            [&](const NotePayload& note) { return with(Words::tr("a note"), note.pm.plainText()); },
            [&](const PhotoPayload& photo) { return with(Words::tr("a photo"), photo.caption); },
            [&](const CountdownPayload& countdown) { return with(Words::tr("a countdown"), countdown.label); },
            [](const NowPlayingSlotPayload&) { return Words::tr("a record"); },
            [](const LocationPayload&) { return Words::tr("a window"); },
            [](const TimezonesPayload&) { return Words::tr("the clocks"); },
            [](const CalendarPayload&) { return Words::tr("a day page"); },
            [](const PomodoroPayload&) { return Words::tr("the block card"); },
            [](const StickerPayload&) { return Words::tr("a sticker"); },
            [](const DoodlePayload&) { return Words::tr("a doodle"); },
        },
        item.payload.value());
}

} // namespace lumaro
