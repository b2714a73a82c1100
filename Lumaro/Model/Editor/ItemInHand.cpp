// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/ItemInHand.h"

#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Unicode.h"

#include <string>
#include <utility>

namespace lumaro {
namespace {

using Update = Announcer::Update;

constexpr std::string_view takenDownText = "it was taken down while you had it — put it back?";

} // namespace

void ItemInHand::select(std::optional<UUID> id) {
    const bool isThere = id && (acts_.board().find(*id) != nullptr || (isNew() && draft_->id() == *id));
    selection_ = isThere ? id : std::nullopt;
    acts_.announce();
}

// What one's own act took down is nobody's to put back: undo does that.
void ItemInHand::follow(By by) {
    const auto& shown = acts_.board();
    if (draft_) {
        const bool wasGone = draft_->isGone();
        draft_->follow(shown);
        if (draft_->isGone() && !wasGone) {
            if (by == By::oneself || mutant(Mutant::newsEndsDrafts)) {
                drop();
            } else {
                acts_.announcer().say(std::string{takenDownText});
            }
        } else if (wasGone && !draft_->isGone()) {
            settleAfterPause();
        }
    }
    const bool isInHand = draft_ && selection_ == draft_->id();
    if (selection_ && !isInHand && shown.find(*selection_) == nullptr) selection_.reset();
}

void ItemInHand::drop() {
    pause_.reset();
    draft_.reset();
    isGesture_ = false;
    isEditing_ = false;
}

EditorDone ItemInHand::letGoOfOther(const UUID& id) {
    if (!draft_ || draft_->id() == id) return {};
    isGesture_ = false;
    isEditing_ = false;
    auto let = settle();
    // A text that was refused stays in the hand. What is gone was only on offer.
    if (draft_ && !draft_->isGone()) return let;
    drop();
    return {};
}

EditorDone ItemInHand::takeInHand(const UUID& id) {
    if (auto let = letGoOfOther(id); draft_ && draft_->id() != id) return let;
    const auto* const item = acts_.board().find(id);
    if (!draft_ && item != nullptr && Edits::isLocked(acts_.board(), *item)) return std::unexpected(EditFault::locked);
    if (!draft_) draft_ = Draft::of(acts_.board(), id);
    if (!draft_) return std::unexpected(EditFault::noSuchItem);
    selection_ = id;
    return {};
}

EditorDone ItemInHand::settle() {
    pause_.reset();
    if (!draft_ || draft_->isGone()) return {};
    if (draft_->isNew()) return settleNew();
    EditorDone placed;
    if (!isGesture_) {
        placed = doneOf(acts_.perform(draft_->placing(acts_.board(), acts_.hand())));
        if (draft_) draft_->dropPlace();
    }
    if (auto written = writeContent(); !written) {
        isEditing_ = true;
        return written;
    }
    if (!isGesture_ && !isEditing_) drop();
    return placed;
}

EditorDone ItemInHand::settleNew() {
    const auto note = draft_->items().front();
    if (isEditing_ || isGesture_) {
        tellNewNote_(&note);
        return {};
    }
    const auto* const written = note.payload.as<NotePayload>();
    EditorDone up;
    if (written != nullptr && !isBlank(written->pm.plainText())) {
        up = doneOf(acts_.perform(draft_->puttingUp(acts_.board(), acts_.hand())));
    } else if (selection_ == note.id) {
        selection_.reset();
    }
    if (!up) {
        isEditing_ = true;
        tellNewNote_(&note);
        return up;
    }
    drop();
    tellNewNote_(nullptr);
    return up;
}

void ItemInHand::settleAfterPause() {
    pause_ = sleeper_.wait(typingPause, [this] {
        const Update update{acts_.announcer()};
        static_cast<void>(acts_.conclude(settle()));
    });
}

EditorDone ItemInHand::writeContent() {
    if (!draft_ || draft_->isGone() || draft_->isNew()) return {};
    auto written = doneOf(acts_.perform(draft_->writing(acts_.board(), acts_.hand()), session_));
    if (written && draft_) draft_->setWritten();
    return written;
}

EditorDone ItemInHand::writeNow() {
    auto written = writeContent();
    if (written) ++session_;
    return written;
}

void ItemInHand::showBoardsContent() {
    if (draft_) draft_->dropContent();
}

template <class Change>
EditorDone ItemInHand::changeInHand(bool isHeld, Change change) {
    // A view may still move what the application has taken out of the hand: nothing to tell people about.
    if (!isHeld) return std::unexpected(EditFault::noSuchItem);
    const Draft::Done done = change(*draft_);
    return acts_.conclude(done ? EditorDone{} : EditorDone{std::unexpected(EditorFault{done.error()})});
}

EditorDone ItemInHand::beginGesture(const UUID& id) {
    const Update update{acts_.announcer()};
    auto taken = takeInHand(id);
    if (taken) {
        isGesture_ = true;
        draft_->touch();
    }
    return acts_.conclude(std::move(taken));
}

EditorDone ItemInHand::moveTo(Point center) {
    return changeInHand(isGesture_, [&](Draft& draft) { return draft.moveTo(center); });
}

EditorDone ItemInHand::turnTo(double degrees) {
    return changeInHand(isGesture_, [&](Draft& draft) { return draft.turnTo(degrees); });
}

EditorDone ItemInHand::resizeTo(double scale) {
    return changeInHand(isGesture_, [&](Draft& draft) { return draft.resizeTo(scale); });
}

EditorDone ItemInHand::endGesture() {
    const Update update{acts_.announcer()};
    if (!isGesture_) return {};
    isGesture_ = false;
    return acts_.conclude(settle());
}

EditorDone ItemInHand::beginEditing(const UUID& id) {
    const Update update{acts_.announcer()};
    auto taken = takeInHand(id);
    if (taken) {
        isEditing_ = true;
        ++session_;
    }
    return acts_.conclude(std::move(taken));
}

EditorDone ItemInHand::beginNote(BoardItem note) {
    const Update update{acts_.announcer()};
    auto let = letGoOfOther(note.id);
    if (draft_) return acts_.conclude(std::move(let));
    selection_ = note.id;
    draft_ = Draft::ofNew(std::move(note));
    isEditing_ = true;
    ++session_;
    return acts_.conclude(EditorDone{});
}

EditorDone ItemInHand::changeLook(std::optional<std::string> paper, std::optional<std::string> pin) {
    if (isNew()) settleAfterPause();
    return changeInHand(isNew(), [&](Draft& draft) { return draft.changeLook(std::move(paper), std::move(pin)); });
}

template <class Change>
EditorDone ItemInHand::changeContent(Change change) {
    if (isEditing_) settleAfterPause();
    return changeInHand(isEditing_, std::move(change));
}

EditorDone ItemInHand::changeText(PMNode text) {
    return changeContent([&](Draft& draft) { return draft.changeText(std::move(text)); });
}

EditorDone ItemInHand::changePayload(Payload payload) {
    return changeContent([&](Draft& draft) { return draft.changePayload(std::move(payload)); });
}

EditorDone ItemInHand::endEditing() {
    const Update update{acts_.announcer()};
    if (!isEditing_) return {};
    isEditing_ = false;
    return acts_.conclude(settle());
}

void ItemInHand::cancel() {
    const Update update{acts_.announcer()};
    if (isNew()) {
        if (selection_ == draft_->id()) selection_.reset();
        tellNewNote_(nullptr);
    }
    drop();
    // What was only on offer is not on the board.
    follow(By::oneself);
    acts_.announce();
}

EditorDone ItemInHand::putBack() {
    const Update update{acts_.announcer()};
    if (!draft_ || !draft_->isGone()) return std::unexpected(EditFault::noSuchItem);
    const auto ops = draft_->puttingBack(acts_.board(), ids_, acts_.hand());
    auto done = doneOf(acts_.perform(ops));
    if (done) {
        drop();
        selection_ = std::get<Upsert>(ops->front().value).item.id;
    }
    return acts_.conclude(std::move(done));
}

} // namespace lumaro
