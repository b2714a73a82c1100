// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/CardFaces.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Board/LiveCards.h"
#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Presence/Countdown.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Overloaded.h"

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

/// A note fades in so many steps, so that it is not painted anew all day.
constexpr int fadeSteps = 12;
constexpr std::chrono::microseconds fadeStep = std::chrono::microseconds{BoardSpec::noteLifespan} / fadeSteps;

NoteFace noteFace(const NotePayload& note, const LiveContext& live) {
    NoteFace face;
    face.text = note.pm;
    face.paper = qText(note.paper);
    face.pin = qText(note.pin);
    face.isKept = note.isKept();
    if (note.expiresAt) {
        const auto end = timeAt(*note.expiresAt, live.zone);
        const bool isFar =
            secondsBetween(live.now, *note.expiresAt) > std::chrono::seconds{BoardSpec::noteLifespan}.count();
        face.until = Words::tr("until %1", "9:14, or 3 may")
                         .arg(isFar ? Words::locale().toString(end.date(), QStringLiteral("d MMM")).toLower()
                                    : end.toString(QStringLiteral("H:mm")));
        const double steps =
            std::floor(secondsBetween(live.now, *note.expiresAt) * 1e6 / static_cast<double>(fadeStep.count()));
        face.fade = 1 - std::clamp((steps + 1) / fadeSteps, 0.0, 1.0);
    }
    return face;
}

PhotoFace photoFace(const PhotoPayload& photo, double scale, const LiveContext& live) {
    PhotoFace face;
    face.picture = live.picture(photo.mediaId, BoardSpec::printSize(photo.aspect) * scale);
    face.caption = qText(photo.caption);
    face.aspect = photo.aspect;
    if (face.picture.isNull()) face.words = Words::tr("on its way…");
    return face;
}

StickerFace stickerFace(const StickerPayload& sticker, double scale, const LiveContext& live) {
    StickerFace face;
    face.picture = live.picture(sticker.mediaId, BoardSpec::stickerSize(sticker.aspect) * scale);
    face.aspect = sticker.aspect;
    if (face.picture.isNull()) face.words = Words::tr("on its way…");
    return face;
}

/// The word after the figure.
QString unitOf(const Countdown::Reading& reading) {
    const auto count = static_cast<int>(std::min(reading.count, std::int64_t{std::numeric_limits<int>::max()}));
    switch (reading.unit) {
    case Countdown::Unit::days: return count == 1 ? Words::tr("day") : Words::tr("days", nullptr, count);
    case Countdown::Unit::hours: return count == 1 ? Words::tr("hour") : Words::tr("hours", nullptr, count);
    case Countdown::Unit::minutes: return count == 1 ? Words::tr("minute") : Words::tr("minutes", nullptr, count);
    case Countdown::Unit::there: return {};
    }
    std::unreachable();
}

CountdownFace countdownFace(const CountdownPayload& countdown, Instant written, const LiveContext& live) {
    const auto reading = Countdown::reading(countdown.targetDate, live.now);
    CountdownFace face;
    face.label = qText(countdown.label);
    face.isThere = reading.unit == Countdown::Unit::there;
    face.isCelebrated = Countdown::isCelebrated(countdown.targetDate, written, live.now);
    if (face.isThere) {
        face.figure = Words::tr("now");
        return face;
    }
    face.figure = QString::number(reading.count);
    face.unit = unitOf(reading);
    return face;
}

QString whoIsIn(const PomodoroPayload& timer, const LiveContext& live) {
    if (!timer.startedBy) return {};
    if (Pomodoro::isShared(timer)) return Words::tr("you're both in");
    if (live.isMe(*timer.startedBy)) return Words::tr("you're in");
    const auto name = knownName(*timer.startedBy, live);
    return name.isEmpty() ? Words::tr("they're in") : Words::tr("%1 is in").arg(name);
}

BlockFace blockFace(const PomodoroPayload& timer, const LiveContext& live) {
    BlockFace face;
    face.face = Pomodoro::face(timer, live.now);
    face.isCoolDown = timer.phase == PomodoroPhase::coolDown;
    const bool isRunning = face.face == Pomodoro::Face::running;
    const auto minutes = face.isCoolDown ? Pomodoro::defaultMinutes : timer.minutes;
    const double seconds = isRunning ? Pomodoro::remaining(timer, live.now) : static_cast<double>(minutes * 60);
    face.figure = face.face == Pomodoro::Face::rung ? Words::tr("done") : qText(PomodoroFormatting::figure(seconds));
    // From the rounded seconds of the figure, so that both change together.
    face.progress = isRunning ? 1 - std::ceil(seconds) / static_cast<double>(timer.minutes * 60)
                              : static_cast<double>(face.face == Pomodoro::Face::rung);
    face.who = face.face == Pomodoro::Face::resting ? Words::tr("whenever you two like") : whoIsIn(timer, live);
    return face;
}

std::optional<Instant> nextChangeOf(const NotePayload& note, Instant now) {
    if (!note.expiresAt || *note.expiresAt <= now) return std::nullopt;
    const auto left = *note.expiresAt - now;
    return *note.expiresAt - (left / fadeStep) * fadeStep + Microseconds{1};
}

std::optional<Instant> nextChangeOf(const PomodoroPayload& timer, Instant now) {
    const auto end = Pomodoro::endsAt(timer);
    switch (Pomodoro::face(timer, now)) {
    case Pomodoro::Face::resting: return std::nullopt;
    case Pomodoro::Face::rung: return saturatingAdd(*end, Pomodoro::ringingSpan);
    case Pomodoro::Face::running: {
        // The figure is rounded up: it changes when whole seconds are left.
        const auto left = std::chrono::ceil<std::chrono::seconds>(*end - now);
        return *end - left + std::chrono::seconds{1};
    }
    }
    return std::nullopt;
}

} // namespace

ItemFace faceOf(const BoardItem& item, const LiveContext& live) {
    return std::visit(
        Overloaded{[&](const NotePayload& it) { return ItemFace{noteFace(it, live)}; },
                   [&](const PhotoPayload& it) { return ItemFace{photoFace(it, item.scale, live)}; },
                   [&](const CountdownPayload& it) { return ItemFace{countdownFace(it, item.updatedAt, live)}; },
                   [&](const NowPlayingSlotPayload& it) { return ItemFace{musicFace(it, item.scale, live)}; },
                   [&](const LocationPayload& it) { return ItemFace{windowFace(it, live)}; },
                   [&](const TimezonesPayload& it) { return ItemFace{clocksFace(it, live)}; },
                   [&](const CalendarPayload& it) { return ItemFace{dayFace(it, live)}; },
                   [&](const PomodoroPayload& it) { return ItemFace{blockFace(it, live)}; },
                   [&](const StickerPayload& it) { return ItemFace{stickerFace(it, item.scale, live)}; },
                   [&](const DoodlePayload& it) { return ItemFace{DoodleFace{it}}; }},
        item.payload.value());
}

std::optional<Instant> nextChange(const BoardItem& item, const LiveContext& live) {
    const auto minute = [&](const auto&) -> std::optional<Instant> {
        return std::chrono::floor<std::chrono::minutes>(live.now) + std::chrono::minutes{1};
    };
    const auto never = [](const auto&) -> std::optional<Instant> { return std::nullopt; };
    return std::visit(
        Overloaded{[&](const NotePayload& it) { return nextChangeOf(it, live.now); },
                   [&](const CountdownPayload& it) { return Countdown::reading(it.targetDate, live.now).nextChange; },
                   [&](const PomodoroPayload& it) { return nextChangeOf(it, live.now); },
                   [&](const LocationPayload& it) { return minute(it); },
                   [&](const TimezonesPayload& it) { return minute(it); },
                   [&](const CalendarPayload& it) { return minute(it); },
                   [&](const NowPlayingSlotPayload& it) { return nextChangeOf(it, live); },
                   [&](const PhotoPayload& it) { return never(it); },
                   [&](const StickerPayload& it) { return never(it); },
                   [&](const DoodlePayload& it) { return never(it); }},
        item.payload.value());
}

} // namespace lumaro
