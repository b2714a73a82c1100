// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/EditorView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Geometry/ItemAt.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/WrittenMoment.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

Point point(QPointF place) {
    return {place.x(), place.y()};
}

std::optional<UUID> idOf(const QString& itemId) {
    return UUID::parse(itemId.toStdString());
}

Instant instant(double ms) {
    return Instant{std::chrono::milliseconds{static_cast<std::int64_t>(ms)}};
}

/// A card that people put up as it is.
std::optional<Payload> cardOf(ItemKind kind, PartnerID partner) {
    switch (kind) {
    case ItemKind::nowPlayingSlot: return NowPlayingSlotPayload{partner};
    case ItemKind::location: return LocationPayload{partner};
    case ItemKind::timezones: return TimezonesPayload{};
    case ItemKind::calendar: return CalendarPayload{partner};
    case ItemKind::pomodoro: return PomodoroPayload{};
    case ItemKind::note:
    case ItemKind::photo:
    case ItemKind::countdown:
    case ItemKind::sticker:
    case ItemKind::doodle: return std::nullopt;
    }
    std::unreachable();
}

} // namespace

EditorView::EditorView(AppModel& app, WallClock& clock, QObject* parent)
    : QObject(parent), app_(app), editor_(app.editor()), hand_(editor_.inHand()), pen_(editor_.pen()), clock_(clock) {
    refresh();
}

PartnerID EditorView::me() const {
    return app_.state().token ? app_.state().token->slot : PartnerID::a;
}

const BoardItem* EditorView::selectedOnBoard() const {
    return hand_.selection() ? app_.board().find(*hand_.selection()) : nullptr;
}

std::optional<BoardItem> EditorView::itemInSight() const {
    const auto& id = hand_.selection();
    if (!id) return std::nullopt;
    if (hand_.draft() && hand_.draft()->id() == *id) return hand_.draft()->items().front();
    const auto* const item = selectedOnBoard();
    return item == nullptr ? std::nullopt : std::optional{*item};
}

void EditorView::hear(const AppNews& news) {
    const auto& what = news.changed;
    if (what.has(AppChange::editor) || what.has(AppChange::board) || what.has(AppChange::membership)) refresh();
    for (const auto& notice : news.notices) Q_EMIT noticed(Words::of(notice));
}

void EditorView::refresh() {
    const auto item = itemInSight();
    selected_ = item ? selectedItem(*item, me(), clock_.now()) : SelectedItem{};
    Q_EMIT changed();
}

// Selecting.

QString EditorView::itemAt(QPointF place, double reach) const {
    const auto id = lumaro::itemAt(app_.state().board, point(place), reach);
    return id ? qText(*id) : QString{};
}

void EditorView::select(const QString& itemId) {
    hand_.select(idOf(itemId));
}

void EditorView::selectNothing() {
    hand_.select(std::nullopt);
}

bool EditorView::selectNext(bool isForward) {
    const auto order = readingOrder(app_.board());
    const auto here = hand_.selection() ? std::ranges::find(order, *hand_.selection()) : order.end();
    std::optional<UUID> next;
    if (here == order.end()) {
        if (!order.empty()) next = isForward ? order.front() : order.back();
    } else if (isForward ? here + 1 != order.end() : here != order.begin()) {
        next = isForward ? *(here + 1) : *(here - 1);
    }
    hand_.select(next);
    return next.has_value();
}

// The selected one in the hand.

void EditorView::grip(QPointF at) {
    const auto item = itemInSight();
    if (!item || !hand_.beginGesture(item->id)) return;
    grip_.emplace(*item, point(at));
}

void EditorView::moveTo(QPointF pointer) {
    if (grip_) static_cast<void>(hand_.moveTo(grip_->centerAt(point(pointer))));
}

void EditorView::turnTo(QPointF pointer) {
    if (grip_) static_cast<void>(hand_.turnTo(grip_->tiltAt(point(pointer))));
}

void EditorView::resizeTo(QPointF pointer) {
    if (grip_) static_cast<void>(hand_.resizeTo(grip_->scaleAt(point(pointer))));
}

void EditorView::letGo() {
    const bool isGripped = std::exchange(grip_, std::nullopt).has_value();
    const bool wasStepping = std::exchange(isStepping_, false);
    if (isGripped || wasStepping) static_cast<void>(hand_.endGesture());
}

// The selected one by keys, wheel and menu.

std::optional<BoardItem> EditorView::inStepGesture() {
    auto item = itemInSight();
    if (!item || grip_) return std::nullopt;
    if (!isStepping_ && !hand_.beginGesture(item->id)) return std::nullopt;
    isStepping_ = true;
    return item;
}

void EditorView::nudge(double dx, double dy) {
    if (const auto item = inStepGesture()) static_cast<void>(hand_.moveTo(item->center + Point{dx, dy}));
}

void EditorView::turnBy(double degrees) {
    if (const auto item = inStepGesture()) static_cast<void>(hand_.turnTo(item->rotationDegrees + degrees));
}

void EditorView::resizeBy(double factor) {
    if (const auto item = inStepGesture()) static_cast<void>(hand_.resizeTo(item->scale * factor));
}

void EditorView::bringToFront() {
    const auto* const item = selectedOnBoard();
    if (item != nullptr && hand_.beginGesture(item->id)) static_cast<void>(hand_.endGesture());
}

void EditorView::takeDown() {
    if (hand_.selection()) static_cast<void>(editor_.carryOut({BoardVerb::TakeDown{*hand_.selection()}}));
}

void EditorView::duplicate() {
    if (hand_.selection()) static_cast<void>(editor_.duplicate(*hand_.selection()));
}

void EditorView::setKept(bool isKept) {
    if (!hand_.selection()) return;
    const UUID id = *hand_.selection();
    static_cast<void>(editor_.carryOut(isKept ? BoardVerb{BoardVerb::Keep{id}} : BoardVerb{BoardVerb::Unkeep{id}}));
}

// What the selected one holds.

void EditorView::replacePayload(const BoardItem& item, Payload payload) {
    static_cast<void>(editor_.replacePayload(item.id, std::move(payload)));
}

template <class Value, class Change>
void EditorView::change(Change change) {
    const auto* const item = selectedOnBoard();
    const auto* const current = item == nullptr ? nullptr : item->payload.as<Value>();
    if (current != nullptr) replacePayload(*item, change(*current));
}

void EditorView::startWriting() {
    if (selected_.kind == QStringLiteral("note")) static_cast<void>(hand_.beginEditing(*hand_.selection()));
}

void EditorView::finishWriting() {
    static_cast<void>(hand_.endEditing());
}

void EditorView::setPaper(const QString& paper) {
    change<NotePayload>([&](NotePayload note) {
        note.paper = paper.toStdString();
        return note;
    });
}

void EditorView::setCaption(const QString& caption) {
    change<PhotoPayload>([&](PhotoPayload photo) {
        photo.caption = caption.trimmed().toStdString();
        return photo;
    });
}

void EditorView::setCountdown(const QString& label, double targetMs) {
    change<CountdownPayload>(
        [&](const CountdownPayload&) { return CountdownPayload{instant(targetMs), label.trimmed().toStdString()}; });
}

void EditorView::startBlock(int minutes) {
    change<PomodoroPayload>(
        [&](PomodoroPayload timer) { return Pomodoro::started(timer, minutes, me(), clock_.now()); });
}

void EditorView::joinBlock() {
    change<PomodoroPayload>([&](PomodoroPayload timer) { return Pomodoro::joined(timer, me(), clock_.now()); });
}

void EditorView::coolDown() {
    change<PomodoroPayload>([&](PomodoroPayload timer) { return Pomodoro::coolingDown(timer, me(), clock_.now()); });
}

void EditorView::rest() {
    change<PomodoroPayload>([](PomodoroPayload timer) { return Pomodoro::rested(timer); });
}

// Putting up.

void EditorView::putUpNote(const QString& paper) {
    // That it has a time to come down makes it a note for a day.
    const auto id = editor_.putUp(NotePayload{pm::emptyDoc(), paper.toStdString(), "brass", clock_.now()});
    if (id) startWriting();
}

bool EditorView::putUpText(const QString& text) {
    return editor_.pasteText(text.toStdString()).has_value();
}

bool EditorView::putUpTextAt(const QString& text, QPointF place) {
    return editor_.pasteText(text.toStdString(), point(place)).has_value();
}

void EditorView::putUpCountdown(const QString& label, double targetMs) {
    static_cast<void>(editor_.putUp(CountdownPayload{instant(targetMs), label.trimmed().toStdString()}));
}

void EditorView::putUpCard(const QString& kind) {
    const auto known = fromName<ItemKind>(kind.toStdString());
    auto card = known ? cardOf(*known, other(me())) : std::nullopt;
    if (card) static_cast<void>(editor_.putUp(std::move(*card)));
}

void EditorView::setBackground(const QString& background) {
    if (const auto known = fromName<BackgroundID>(background.toStdString())) {
        static_cast<void>(editor_.carryOut({BoardVerb::SetBackground{*known}}));
    }
}

// Pen and eraser.

void EditorView::beginDoodle(const QString& onItem) {
    const auto id = idOf(onItem);
    const auto* const item = id ? app_.board().find(*id) : nullptr;
    if (item != nullptr && item->kind() == ItemKind::doodle) {
        static_cast<void>(pen_.edit(*id));
    } else {
        pen_.begin(item != nullptr ? id : std::nullopt);
    }
    Q_EMIT inkChanged();
}

void EditorView::penDown(QPointF place, const QString& ink, double width) {
    static_cast<void>(pen_.down(point(place), {ink.toStdString(), width}));
    Q_EMIT inkChanged();
}

void EditorView::penTo(QPointF place) {
    pen_.moveTo(point(place));
    Q_EMIT inkChanged();
}

void EditorView::penUp() {
    pen_.up();
    Q_EMIT inkChanged();
}

void EditorView::erase(QPointF from, QPointF to, double radius) {
    pen_.eraseAlong(point(from), point(to), radius);
    Q_EMIT inkChanged();
}

void EditorView::finishDoodle() {
    static_cast<void>(pen_.finish());
    Q_EMIT inkChanged();
}

void EditorView::cancelDoodle() {
    pen_.cancel();
    Q_EMIT inkChanged();
}

void EditorView::undo() {
    static_cast<void>(editor_.undo());
}

void EditorView::redo() {
    static_cast<void>(editor_.redo());
}

void EditorView::putBack() {
    static_cast<void>(hand_.putBack());
}

void EditorView::letBe() {
    hand_.cancel();
}

// Moments.

double EditorView::momentFrom(const QString& day, const QString& time) {
    const auto text = day.trimmed() + (time.trimmed().isEmpty() ? QString{} : QLatin1Char(' ') + time.trimmed());
    const auto moment = parseWrittenMoment(text.toStdString());
    if (!moment) return std::numeric_limits<double>::quiet_NaN();
    const QDate date{static_cast<int>(moment->day.year()), static_cast<int>(static_cast<unsigned>(moment->day.month())),
                     static_cast<int>(static_cast<unsigned>(moment->day.day()))};
    const auto clock = QTime::fromMSecsSinceStartOfDay(static_cast<int>(moment->time.count()) * 1000);
    const QDateTime written{date, clock, moment->isUtc ? Qt::UTC : Qt::LocalTime};
    return written.isValid() ? static_cast<double>(written.toMSecsSinceEpoch())
                             : std::numeric_limits<double>::quiet_NaN();
}

QString EditorView::dayOf(double ms) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms)).date().toString(Qt::ISODate);
}

QString EditorView::timeOf(double ms) {
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(ms)).time().toString(QStringLiteral("HH:mm"));
}

double EditorView::inDays(int days) {
    return static_cast<double>(
        QDate::currentDate().addDays(days).startOfDay().addSecs(qint64{18} * 3600).toMSecsSinceEpoch());
}

} // namespace lumaro
