// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/EditorModel.h"

#include "Lumaro/Model/EditorOps.h"
#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Support/Mutant.h"

#include <algorithm>
#include <map>
#include <utility>

namespace lumaro {
namespace {

using Stroke = Announcer::Stroke;

constexpr std::string_view takenDownText = "it was taken down while you had it — put it back?";

// What a pasted note looks like.
constexpr std::string_view pastedPaper = "butter";
constexpr std::string_view pastedPin = "brass";

bool hasNoText(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

EditorModel::Done doneOf(EditorModel::Act act) {
    if (!act) return std::unexpected(std::move(act.error()));
    return {};
}

} // namespace

template <class Result>
Result EditorModel::conclude(Result done) {
    const Stroke stroke{ports_.announcer};
    if (!done) say(textOf(done.error()));
    announce();
    return done;
}

// For the application.

void EditorModel::setLiveItems(const Board& shown) {
    const Stroke stroke{ports_.announcer};
    follow(shown, By::others);
    announce();
}

// What one's own act took down is nobody's to put back: undo does that.
void EditorModel::follow(const Board& shown, By by) {
    if (draft_) {
        const bool wasGone = draft_->isGone();
        draft_->follow(shown);
        if (draft_->isGone() && !wasGone) {
            if (by == By::oneself || mutant(Mutant::newsEndsDrafts)) {
                dropDraft();
            } else {
                say(takenDownText);
            }
        } else if (wasGone && !draft_->isGone()) {
            settleAfterPause();
        }
    }
    const bool isInHand = draft_ && selection_ == draft_->id();
    if (selection_ && !isInHand && shown.find(*selection_) == nullptr) selection_.reset();
}

void EditorModel::discardDraft() {
    const Stroke stroke{ports_.announcer};
    dropDraft();
    doodle_.reset();
    selection_.reset();
    history_.clear();
    announce();
}

void EditorModel::withdraw(const UUID& batch) {
    const Stroke stroke{ports_.announcer};
    history_.withdraw(batch);
    announce();
}

void EditorModel::select(std::optional<UUID> id) {
    selection_ = id && board().find(*id) != nullptr ? id : std::nullopt;
    announce();
}

// Acts.

std::expected<UUID, ActFault> EditorModel::act(std::vector<Op> ops) {
    auto batch = ports_.desk.act(std::move(ops));
    if (batch) follow(board(), By::oneself);
    return batch;
}

EditorModel::Act EditorModel::perform(Ops ops, std::optional<std::uint64_t> session) {
    if (!ops) return std::unexpected(ops.error());
    auto wanted = Edits::withoutIdle(std::move(*ops), board());
    if (wanted.empty()) return std::nullopt;
    const Board before = board();
    const auto batch = act(std::move(wanted));
    if (!batch) return std::unexpected(batch.error());
    history_.record(*batch, before, board(), session);
    return *batch;
}

EditorModel::Act EditorModel::takeBack(UndoHistory::Way way) {
    const Stroke stroke{ports_.announcer};
    const auto refused = [this](EditorFault fault) { return conclude(Act{std::unexpected(std::move(fault))}); };
    // What was typed is taken back first, as the latest act.
    if (const auto written = writeContent(); !written) return refused(written.error());
    ++session_;
    auto ops = history_.next(way, board(), hand());
    if (!ops) return refused(ops.error());
    const auto batch = act(std::move(*ops));
    if (!batch) return refused(batch.error());
    history_.went(way, *batch, board());
    if (draft_) draft_->dropContent();
    return conclude(Act{*batch});
}

// One item in the hand.

void EditorModel::dropDraft() {
    pause_.reset();
    draft_.reset();
    isGesture_ = false;
    isEditing_ = false;
}

EditorModel::Done EditorModel::takeInHand(const UUID& id) {
    if (draft_ && draft_->id() != id) {
        isGesture_ = false;
        isEditing_ = false;
        auto let = settle();
        // A text that was refused stays in the hand. What is gone was only on offer.
        if (draft_ && !draft_->isGone()) return let;
        dropDraft();
    }
    if (!draft_) draft_ = Draft::of(board(), id);
    if (!draft_) return std::unexpected(EditFault::noSuchItem);
    selection_ = id;
    return {};
}

EditorModel::Done EditorModel::settle() {
    pause_.reset();
    if (!draft_ || draft_->isGone()) return {};
    Done placed;
    if (!isGesture_) {
        placed = doneOf(perform(draft_->placing(board(), hand())));
        if (draft_) draft_->dropPlace();
    }
    if (auto written = writeContent(); !written) {
        isEditing_ = true;
        return written;
    }
    if (!isGesture_ && !isEditing_) dropDraft();
    return placed;
}

void EditorModel::settleAfterPause() {
    pause_ = ports_.sleeper.wait(typingPause, [this] {
        const Stroke stroke{ports_.announcer};
        static_cast<void>(conclude(settle()));
    });
}

EditorModel::Done EditorModel::writeContent() {
    if (!draft_ || draft_->isGone()) return {};
    auto written = doneOf(perform(draft_->writing(board(), hand()), session_));
    if (written && draft_) draft_->setWritten();
    return written;
}

template <class Change>
EditorModel::Done EditorModel::changeInHand(bool isHeld, Change change) {
    // A view may still move what the application has taken out of the hand: nothing to tell people about.
    if (!isHeld) return std::unexpected(EditFault::noSuchItem);
    const Draft::Done done = change(*draft_);
    return conclude(done ? Done{} : Done{std::unexpected(EditorFault{done.error()})});
}

EditorModel::Done EditorModel::beginGesture(const UUID& id) {
    const Stroke stroke{ports_.announcer};
    auto taken = takeInHand(id);
    if (taken) {
        isGesture_ = true;
        draft_->touch();
    }
    return conclude(std::move(taken));
}

EditorModel::Done EditorModel::moveTo(Point center) {
    return changeInHand(isGesture_, [&](Draft& draft) { return draft.moveTo(center); });
}

EditorModel::Done EditorModel::turnTo(double degrees) {
    return changeInHand(isGesture_, [&](Draft& draft) { return draft.turnTo(degrees); });
}

EditorModel::Done EditorModel::resizeTo(double scale) {
    return changeInHand(isGesture_, [&](Draft& draft) { return draft.resizeTo(scale); });
}

EditorModel::Done EditorModel::endGesture() {
    const Stroke stroke{ports_.announcer};
    if (!isGesture_) return {};
    isGesture_ = false;
    return conclude(settle());
}

EditorModel::Done EditorModel::beginEditing(const UUID& id) {
    const Stroke stroke{ports_.announcer};
    auto taken = takeInHand(id);
    if (taken) {
        isEditing_ = true;
        ++session_;
    }
    return conclude(std::move(taken));
}

template <class Change>
EditorModel::Done EditorModel::changeContent(Change change) {
    if (isEditing_) settleAfterPause();
    return changeInHand(isEditing_, std::move(change));
}

EditorModel::Done EditorModel::changeText(PMNode text) {
    return changeContent([&](Draft& draft) { return draft.changeText(std::move(text)); });
}

EditorModel::Done EditorModel::changePayload(Payload payload) {
    return changeContent([&](Draft& draft) { return draft.changePayload(std::move(payload)); });
}

EditorModel::Done EditorModel::endEditing() {
    const Stroke stroke{ports_.announcer};
    if (!isEditing_) return {};
    isEditing_ = false;
    return conclude(settle());
}

void EditorModel::cancel() {
    const Stroke stroke{ports_.announcer};
    dropDraft();
    // What was only on offer is not on the board.
    follow(board(), By::oneself);
    announce();
}

EditorModel::Done EditorModel::putBack() {
    const Stroke stroke{ports_.announcer};
    if (!draft_ || !draft_->isGone()) return std::unexpected(EditFault::noSuchItem);
    const auto ops = draft_->puttingBack(board(), ports_.ids, hand());
    auto done = doneOf(perform(ops));
    if (done) {
        dropDraft();
        selection_ = std::get<Upsert>(ops->front().value).item.id;
    }
    return conclude(std::move(done));
}

// Acts of one step.

std::expected<UUID, EditorFault> EditorModel::concludePutUp(const UUID& id, Done done) {
    if (done) selection_ = id;
    const auto concluded = conclude(std::move(done));
    if (!concluded) return std::unexpected(concluded.error());
    return id;
}

EditorModel::Act EditorModel::carryOut(const BoardVerb& verb) {
    const Stroke stroke{ports_.announcer};
    // With what was typed on it, so that taking this back brings that too.
    const auto* const gone = std::get_if<BoardVerb::TakeDown>(&verb.value);
    if (gone != nullptr && draft_ && draft_->id() == gone->item) static_cast<void>(writeContent());
    return conclude(perform(opsOf(verb, board(), hand())));
}

std::expected<UUID, EditorFault> EditorModel::putUp(Payload payload, std::optional<Point> at) {
    const Stroke stroke{ports_.announcer};
    const UUID id = ports_.ids.next();
    const BoardVerb verb{BoardVerb::PutUp{id, std::move(payload), at}};
    return concludePutUp(id, doneOf(perform(opsOf(verb, board(), hand()))));
}

std::expected<UUID, EditorFault> EditorModel::pasteText(std::string_view text) {
    const Stroke stroke{ports_.announcer};
    if (hasNoText(text)) return concludePutUp({}, std::unexpected(ActFault::invalid));
    return putUp(NotePayload{.pm = pm::docOfLines(text),
                             .paper = std::string{pastedPaper},
                             .pin = std::string{pastedPin},
                             .expiresAt = ports_.clock.now()});
}

std::expected<UUID, EditorFault> EditorModel::duplicate(const UUID& id) {
    const Stroke stroke{ports_.announcer};
    auto copies = EditorOps::withDoodles(board(), id);
    if (copies.empty()) return concludePutUp(id, std::unexpected(EditFault::noSuchItem));
    const Point offset = EditorOps::duplicateOffset(board(), copies.front());
    std::map<UUID, UUID> names;
    for (auto& item : copies) {
        item.center = item.center + offset;
        names[item.id] = ports_.ids.next();
    }
    return concludePutUp(names[id], doneOf(perform(EditorOps::putUpAnew(board(), copies, names, hand()))));
}

EditorModel::Done EditorModel::move(const UUID& id, Point center) {
    return doneOf(carryOut({BoardVerb::Move{id, center}}));
}

EditorModel::Done EditorModel::takeDown(const UUID& id) {
    return doneOf(carryOut({BoardVerb::TakeDown{id}}));
}

EditorModel::Done EditorModel::keep(const UUID& id) {
    return doneOf(carryOut({BoardVerb::Keep{id}}));
}

EditorModel::Done EditorModel::unkeep(const UUID& id) {
    return doneOf(carryOut({BoardVerb::Unkeep{id}}));
}

EditorModel::Done EditorModel::replacePayload(const UUID& id, Payload payload) {
    const Stroke stroke{ports_.announcer};
    return conclude(doneOf(perform(Edits::changePayload(board(), id, std::move(payload), hand()))));
}

EditorModel::Done EditorModel::setBackground(BackgroundID background) {
    return doneOf(carryOut({BoardVerb::Paint{background}}));
}

// Pen and eraser.

void EditorModel::beginDoodle(std::optional<UUID> surface) {
    doodle_.emplace(surface);
    announce();
}

EditorModel::Done EditorModel::editDoodle(const UUID& id) {
    const Stroke stroke{ports_.announcer};
    auto session = DoodleSession::over(board(), id);
    if (!session) return conclude(Done{std::unexpected(session.error())});
    doodle_ = std::move(*session);
    return conclude(Done{});
}

EditorModel::Done EditorModel::penDown(Point place, DoodleSession::Pen pen) {
    const Stroke stroke{ports_.announcer};
    if (!doodle_) return std::unexpected(EditFault::noSuchItem);
    const auto down = doodle_->penDown(place, std::move(pen));
    return conclude(down ? Done{} : Done{std::unexpected(EditorFault{down.error()})});
}

void EditorModel::penTo(Point place) {
    if (!doodle_) return;
    doodle_->penTo(place);
    announce();
}

void EditorModel::penUp() {
    if (!doodle_) return;
    doodle_->penUp();
    announce();
}

void EditorModel::eraseAlong(Point from, Point to, double radius) {
    if (!doodle_) return;
    doodle_->eraseAlong(from, to, radius);
    announce();
}

EditorModel::Done EditorModel::finishDoodle() {
    const Stroke stroke{ports_.announcer};
    if (!doodle_) return {};
    auto done = doneOf(perform(doodle_->finish(board(), ports_.ids.next(), hand())));
    if (done) doodle_.reset();
    return conclude(std::move(done));
}

void EditorModel::cancelDoodle() {
    doodle_.reset();
    announce();
}

} // namespace lumaro
