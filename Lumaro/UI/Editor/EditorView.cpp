// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Editor/EditorView.h"

#include "DesignSystem/Words.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Geometry/ItemAt.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/EnumNames.h"
#include "Widgets/Items/ItemPainting.h"
#include "Widgets/Items/NoteLinks.h"
#include "Widgets/Items/NoteText.h"

#include <QtGui/QDesktopServices>

#include <algorithm>
#include <chrono>
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
    : QObject(parent), app_(app), editor_(app.editor()), hand_(editor_.inHand()), group_(editor_.group()),
      clock_(clock), countdown_(clock, QLocale{}, QTimeZone::systemTimeZone()), pen_(app) {
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
    if (group_.isSelected()) {
        selected_ = groupInSight();
    } else {
        const auto item = itemInSight();
        selected_ = item ? selectedItem(*item, me(), clock_.now()) : SelectedItem{};
        selected_.isLocked = item && Edits::isLocked(app_.board(), *item);
    }
    Q_EMIT changed();
    pen_.refresh();
}

// Selecting.

QString EditorView::itemAt(QPointF place, double reach) const {
    const auto id = lumaro::itemAt(app_.state().board, point(place), reach);
    return id ? qText(*id) : QString{};
}

SelectedItem EditorView::groupInSight() const {
    bool hasNotes = false;
    bool areKept = true;
    for (const auto& id : group_.members()) {
        const auto* const item = app_.board().find(id);
        const auto* const note = item == nullptr ? nullptr : item->payload.as<NotePayload>();
        if (note == nullptr) continue;
        hasNotes = true;
        areKept = areKept && note->isKept();
    }
    return selectedGroup(group_.frame(), group_.members().size(), hasNotes, hasNotes && areKept);
}

QStringList EditorView::members() const {
    QStringList ids;
    for (const auto& id : group_.members()) ids.append(qText(id));
    return ids;
}

QString EditorView::walkedTo() const {
    return walkedTo_ ? qText(*walkedTo_) : QString{};
}

void EditorView::select(const QString& itemId) {
    const auto id = idOf(itemId);
    walkedTo_.reset();
    group_.select(id ? std::vector{*id} : std::vector<UUID>{});
}

void EditorView::selectNothing() {
    select({});
}

void EditorView::selectAll() {
    walkedTo_.reset();
    std::vector<UUID> ids;
    for (const auto& item : app_.board().items) ids.push_back(item.id);
    group_.selectUnlocked(std::move(ids));
}

bool EditorView::isSelected(const QString& itemId) const {
    const auto id = idOf(itemId);
    return id && std::ranges::count(group_.selection(), *id) > 0;
}

void EditorView::toggle(const QString& itemId) {
    walkedTo_.reset();
    if (const auto id = idOf(itemId)) group_.toggle(*id);
}

bool EditorView::selectNext(bool isForward) {
    const auto order = readingOrder(app_.board());
    const bool isGathering = walkedTo_ || group_.isSelected();
    const auto from = isGathering ? walkedTo_ : hand_.selection();
    const auto here = from ? std::ranges::find(order, *from) : order.end();
    std::optional<UUID> next;
    if (here == order.end()) {
        if (!order.empty()) next = isForward ? order.front() : order.back();
    } else if (isForward ? here + 1 != order.end() : here != order.begin()) {
        next = isForward ? *(here + 1) : *(here - 1);
    }
    walkedTo_ = isGathering ? next : std::nullopt;
    if (isGathering) {
        refresh();
    } else {
        hand_.select(next);
    }
    return next.has_value();
}

void EditorView::toggleWalkedTo() {
    const auto id = walkedTo_ ? walkedTo_ : hand_.selection();
    if (!id) return;
    // The first one is selected already.
    if (std::exchange(walkedTo_, id)) return group_.toggle(*id);
    refresh();
}

void EditorView::beginLasso(bool adds) {
    walkedTo_.reset();
    lassoed_ = adds ? group_.selection() : std::vector<UUID>{};
}

void EditorView::lasso(QPointF from, QPointF to) {
    const QRectF area = QRectF{from, to}.normalized();
    auto ids = lassoed_;
    for (const auto& id : itemsWithin(app_.board(), {{area.x(), area.y()}, {area.width(), area.height()}})) {
        if (std::ranges::find(ids, id) == ids.end()) ids.push_back(id);
    }
    group_.selectUnlocked(std::move(ids));
}

// What is selected in the hand.

template <class Act>
void EditorView::inHand(Act act) {
    if (group_.isSelected()) {
        static_cast<void>(act(group_));
    } else {
        static_cast<void>(act(hand_));
    }
}

std::optional<HeldPlace> EditorView::placeInSight() const {
    if (group_.isSelected()) {
        const auto frame = group_.frame();
        return HeldPlace{frame.middle, frame.tilt, frame.scale};
    }
    const auto item = itemInSight();
    return item ? std::optional{HeldPlace{item->center, item->rotationDegrees, item->scale}} : std::nullopt;
}

bool EditorView::beginGesture() {
    if (group_.isSelected()) return group_.beginGesture().has_value();
    return hand_.selection() && hand_.beginGesture(*hand_.selection()).has_value();
}

void EditorView::grip(QPointF at) {
    const auto place = placeInSight();
    if (place && beginGesture()) grip_.emplace(*place, point(at));
}

void EditorView::moveTo(QPointF pointer) {
    if (grip_) inHand([&](auto& hand) { return hand.moveTo(grip_->centerAt(point(pointer))); });
}

void EditorView::turnTo(QPointF pointer) {
    if (grip_) inHand([&](auto& hand) { return hand.turnTo(grip_->tiltAt(point(pointer))); });
}

void EditorView::resizeTo(QPointF pointer) {
    if (grip_) inHand([&](auto& hand) { return hand.resizeTo(grip_->scaleAt(point(pointer))); });
}

void EditorView::letGo() {
    const bool isGripped = std::exchange(grip_, std::nullopt).has_value();
    const bool wasStepping = std::exchange(isStepping_, false);
    if (isGripped || wasStepping) inHand([](auto& hand) { return hand.endGesture(); });
}

// What is selected, by keys, wheel and menu.

std::optional<HeldPlace> EditorView::inStepGesture() {
    if (grip_ || (!isStepping_ && !beginGesture())) return std::nullopt;
    isStepping_ = true;
    return placeInSight();
}

void EditorView::nudge(double dx, double dy) {
    const auto place = inStepGesture();
    if (place) inHand([&](auto& hand) { return hand.moveTo(place->center + Point{dx, dy}); });
}

void EditorView::turnBy(double degrees) {
    const auto place = inStepGesture();
    if (place) inHand([&](auto& hand) { return hand.turnTo(place->tilt + degrees); });
}

void EditorView::resizeBy(double factor) {
    const auto place = inStepGesture();
    if (place) inHand([&](auto& hand) { return hand.resizeTo(place->scale * factor); });
}

void EditorView::carryOut(const EditorModel::VerbOn& verbOn) {
    if (group_.isSelected()) {
        static_cast<void>(editor_.carryOutOnGroup(verbOn));
    } else if (hand_.selection()) {
        static_cast<void>(editor_.carryOut(verbOn(*hand_.selection())));
    }
}

void EditorView::bringToFront() {
    if (group_.isSelected()) return static_cast<void>(editor_.stackGroup(Edits::StackEnd::front));
    carryOut([](const UUID& id) { return BoardVerb{BoardVerb::ToFront{id}}; });
}

void EditorView::putToBack() {
    if (group_.isSelected()) return static_cast<void>(editor_.stackGroup(Edits::StackEnd::back));
    carryOut([](const UUID& id) { return BoardVerb{BoardVerb::ToBack{id}}; });
}

void EditorView::takeDown() {
    carryOut([](const UUID& id) { return BoardVerb{BoardVerb::TakeDown{id}}; });
}

void EditorView::duplicate() {
    if (group_.isSelected()) return static_cast<void>(editor_.duplicateGroup());
    if (hand_.selection()) static_cast<void>(editor_.duplicate(*hand_.selection()));
}

void EditorView::setKept(bool isKept) {
    carryOut(
        [=](const UUID& id) { return isKept ? BoardVerb{BoardVerb::Keep{id}} : BoardVerb{BoardVerb::Unkeep{id}}; });
}

void EditorView::setLocked(bool isLocked) {
    carryOut(
        [=](const UUID& id) { return isLocked ? BoardVerb{BoardVerb::Lock{id}} : BoardVerb{BoardVerb::Unlock{id}}; });
}

void EditorView::giveHeart() {
    if (hand_.selection()) static_cast<void>(editor_.giveHeart(*hand_.selection()));
}

// What the selected one holds.

void EditorView::replacePayload(const BoardItem& item, Payload payload) {
    static_cast<void>(editor_.replacePayload(item.id, std::move(payload)));
}

template <class Value, class Change>
void EditorView::change(Change change) {
    const auto* const item = selectedOnBoard();
    const auto* const current = item == nullptr ? nullptr : item->payload.as<Value>();
    if (current != nullptr) return replacePayload(*item, change(*current));
    // A sheet was open while the partner took down what it is about.
    if (item == nullptr) Q_EMIT noticed(Words::tr("that has been taken down meanwhile."));
}

bool EditorView::mayEdit() {
    if (selected_.isLocked) Q_EMIT noticed(Words::of(textOf(EditorFault{EditFault::locked})));
    return !selected_.isLocked;
}

void EditorView::startWriting() {
    if (selected_.kind == QStringLiteral("note")) static_cast<void>(hand_.beginEditing(*hand_.selection()));
}

void EditorView::finishWriting() {
    static_cast<void>(hand_.endEditing());
}

void EditorView::setPaper(const QString& paper) {
    if (hand_.isNew()) return static_cast<void>(hand_.changeLook(paper.toStdString(), std::nullopt));
    change<NotePayload>([&](NotePayload note) {
        note.paper = paper.toStdString();
        return note;
    });
}

void EditorView::setPin(const QString& pin) {
    if (hand_.isNew()) return static_cast<void>(hand_.changeLook(std::nullopt, pin.toStdString()));
    change<NotePayload>([&](NotePayload note) {
        note.pin = pin.toStdString();
        return note;
    });
}

bool EditorView::isLongNote() const {
    const auto item = itemInSight();
    const auto* const note = item ? item->payload.as<NotePayload>() : nullptr;
    return note != nullptr &&
           overflows(note->pm, noteTextBox({BoardSpec::noteSize.width, BoardSpec::noteSize.height}).size());
}

QStringList EditorView::links() const {
    const auto item = itemInSight();
    const auto* const note = item ? item->payload.as<NotePayload>() : nullptr;
    QStringList links;
    if (note == nullptr) return links;
    for (const auto& link : linksIn(qText(std::string_view{note->pm.plainText()}))) {
        const auto address = link.url.toString(QUrl::FullyEncoded);
        if (!links.contains(address)) links.append(address);
    }
    return links;
}

QString EditorView::placeOf(const QString& link) {
    return lumaro::placeOf(QUrl{link});
}

void EditorView::openLink(const QString& link) {
    // Only what would be told apart as a link in a text.
    const auto links = linksIn(link);
    if (links.size() == 1 && links.front().length == link.size()) QDesktopServices::openUrl(links.front().url);
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

void EditorView::beginNote() {
    static_cast<void>(editor_.beginNote());
}

QString EditorView::quickNote() const {
    return qText(app_.drafts().quickNote());
}

void EditorView::keepQuickNote(const QString& text) {
    app_.drafts().keepQuickNote(text.toStdString());
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

// Taking back.

void EditorView::undo() {
    if (isDoodling()) return pen_.undo();
    static_cast<void>(editor_.undo());
}

void EditorView::redo() {
    if (isDoodling()) return pen_.redo();
    static_cast<void>(editor_.redo());
}

void EditorView::layDown() {
    editor_.layDown();
}

void EditorView::putBack() {
    static_cast<void>(hand_.putBack());
}

void EditorView::letBe() {
    hand_.cancel();
}

} // namespace lumaro
