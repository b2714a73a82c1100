// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/SelectedItem.h"

#include "Lumaro/UI/Board/LiveTime.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/EnumNames.h"
#include "Widgets/Items/NoteLinks.h"

#include <QtCore/QTimeZone>

#include <chrono>
#include <utility>

namespace lumaro {
namespace {

bool canEdit(ItemKind kind) {
    switch (kind) {
    case ItemKind::note:
    case ItemKind::countdown:
    case ItemKind::doodle: return true;
    case ItemKind::photo:
    case ItemKind::sticker:
    case ItemKind::nowPlayingSlot:
    case ItemKind::location:
    case ItemKind::timezones:
    case ItemKind::calendar:
    case ItemKind::pomodoro: return false;
    }
    std::unreachable();
}

void addBlock(SelectedItem& selected, const PomodoroPayload& timer, PartnerID me, Instant now) {
    const auto face = Pomodoro::face(timer, now);
    selected.minutes =
        static_cast<int>(timer.phase == PomodoroPhase::coolDown ? Pomodoro::defaultMinutes : timer.minutes);
    selected.canStart = face != Pomodoro::Face::running;
    selected.canJoin = face == Pomodoro::Face::running && !Pomodoro::includes(timer, me);
    selected.canCoolDown = face == Pomodoro::Face::rung;
    selected.canRest = face != Pomodoro::Face::resting;
}

} // namespace

SelectedItem selectedItem(const BoardItem& item, PartnerID me, Instant now) {
    const auto size = item.naturalSize() * item.scale;
    SelectedItem selected{.isThere = true,
                          .count = 1,
                          .itemId = qText(item.id),
                          .kind = qText(nameOf(item.kind())),
                          .centerX = item.center.x,
                          .centerY = item.center.y,
                          .width = size.width,
                          .height = size.height,
                          .tilt = item.rotationDegrees,
                          .itemScale = item.scale,
                          .isLocked = item.isLocked,
                          .canDrawOn = item.kind() != ItemKind::doodle,
                          .canResize = BoardSpec::canResize(item.kind()),
                          .canEdit = canEdit(item.kind())};
    if (const auto* const note = item.payload.as<NotePayload>()) {
        selected.canKeep = true;
        selected.isKept = note->isKept();
        selected.paper = qText(note->paper);
        selected.pin = qText(note->pin);
        if (note->expiresAt) selected.comesDown = comesDown(*note->expiresAt, now, QTimeZone::systemTimeZone());
        selected.hasLinks = !linksIn(qText(std::string_view{note->pm.plainText()})).empty();
    } else if (const auto* const photo = item.payload.as<PhotoPayload>()) {
        selected.text = qText(photo->caption);
        selected.canOpen = true;
        selected.canCaption = true;
    } else if (item.payload.as<StickerPayload>() != nullptr) {
        selected.canOpen = true;
    } else if (const auto* const countdown = item.payload.as<CountdownPayload>()) {
        selected.text = qText(countdown->label);
        selected.targetMs = static_cast<double>(
            std::chrono::floor<std::chrono::milliseconds>(countdown->targetDate).time_since_epoch().count());
    } else if (const auto* const timer = item.payload.as<PomodoroPayload>()) {
        addBlock(selected, *timer, me, now);
    } else if (const auto* const music = item.payload.as<NowPlayingSlotPayload>()) {
        selected.isOwnMusic = music->slot == me;
    } else if (const auto* const window = item.payload.as<LocationPayload>()) {
        selected.isOwnPlace = window->slot == me;
    }
    return selected;
}

SelectedItem selectedGroup(const GroupFrame& frame, std::size_t count, bool hasNotes, bool areKept) {
    return {.isThere = true,
            .count = static_cast<int>(count),
            .itemId = {},
            .kind = {},
            .centerX = frame.middle.x,
            .centerY = frame.middle.y,
            .width = frame.size.width,
            .height = frame.size.height,
            .tilt = frame.tilt,
            .itemScale = frame.scale,
            .canResize = frame.canResize,
            .canKeep = hasNotes,
            .isKept = areKept};
}

} // namespace lumaro
