// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/EditorModel.h"

#include "Lumaro/Model/Editor/EditorOps.h"
#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/BoardModel/NoteLook.h"
#include "LumaroCore/Geometry/Heart.h"
#include "LumaroCore/Support/Unicode.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace lumaro {
namespace {

using Update = Announcer::Update;

NotePayload noteForADay(PMNode text, Instant now) {
    return {.pm = std::move(text),
            .paper = std::string{defaultPaper},
            .pin = std::string{defaultPin},
            .expiresAt = Edits::lifespanFrom(now)};
}

} // namespace

EditorModel::EditorModel(Ports ports)
    : ports_(ports), acts_({.board = ports.board, .clock = ports.clock, .announcer = ports.announcer},
                           [this] { followBoard(ItemInHand::By::oneself); }),
      inHand_(acts_, ports.ids, ports.sleeper), group_(acts_, inHand_), pen_(acts_, ports.ids) {
}

bool EditorModel::canUndo() const {
    if (pen_.session()) return pen_.session()->canUndo();
    if (inHand_.isNew()) return false;
    return acts_.can(UndoHistory::Way::undo) || inHand_.hasUnwritten();
}

bool EditorModel::canRedo() const {
    if (pen_.session()) return pen_.session()->canRedo();
    return !inHand_.isNew() && acts_.can(UndoHistory::Way::redo);
}

std::vector<BoardItem> EditorModel::held() const {
    auto items = group_.draft() ? group_.draft()->items() : std::vector<BoardItem>{};
    if (inHand_.draft()) std::ranges::move(inHand_.draft()->items(), std::back_inserter(items));
    return items;
}

// For the application.

void EditorModel::boardChanged() {
    const Update update{ports_.announcer};
    followBoard(ItemInHand::By::others);
    acts_.announce();
}

void EditorModel::discardDraft() {
    const Update update{ports_.announcer};
    inHand_.cancel();
    if (std::exchange(offered_, std::nullopt)) inHand_.forgetNewNote();
    group_.select({});
    pen_.cancel();
    acts_.forget();
}

void EditorModel::followBoard(ItemInHand::By by) {
    inHand_.follow(by);
    group_.follow();
}

void EditorModel::layDown() {
    const Update update{ports_.announcer};
    static_cast<void>(group_.endGesture());
    static_cast<void>(inHand_.endGesture());
    static_cast<void>(inHand_.endEditing());
    static_cast<void>(pen_.finish());
}

void EditorModel::withdraw(const UUID& batch) {
    acts_.withdraw(batch);
    acts_.announce();
}

// Acts of one step.

EditorAct EditorModel::carryOut(const BoardVerb& verb) {
    const Update update{ports_.announcer};
    // With what was typed on it, so that taking this back brings that too.
    const auto* const gone = std::get_if<BoardVerb::TakeDown>(&verb.value);
    if (gone != nullptr && inHand_.isNew() && inHand_.draft()->id() == gone->item) {
        inHand_.cancel();
        return std::nullopt;
    }
    if (gone != nullptr && inHand_.draft() && inHand_.draft()->id() == gone->item) {
        static_cast<void>(inHand_.writeNow());
    }
    return acts_.conclude(acts_.perform(opsOf(verb, acts_.board(), acts_.hand())));
}

std::expected<UUID, EditorFault> EditorModel::concludePutUp(const UUID& id, EditorDone done) {
    const auto concluded = acts_.conclude(std::move(done));
    if (!concluded) return std::unexpected(concluded.error());
    // What comes from elsewhere takes nothing out of the hand.
    if (!group_.draft()) group_.select({id});
    return id;
}

std::expected<UUID, EditorFault> EditorModel::putUp(Payload payload, std::optional<Point> at) {
    const Update update{ports_.announcer};
    const UUID id = ports_.ids.next();
    const BoardVerb verb{BoardVerb::PutUp{id, std::move(payload), at}};
    return concludePutUp(id, doneOf(acts_.perform(opsOf(verb, acts_.board(), acts_.hand()))));
}

std::expected<UUID, EditorFault> EditorModel::pasteText(std::string_view text, std::optional<Point> at) {
    const Update update{ports_.announcer};
    if (isBlank(text)) return concludePutUp({}, std::unexpected(ActFault::invalid));
    return putUp(noteForADay(pm::docOfLines(text), ports_.clock.now()), at);
}

EditorDone EditorModel::beginNote() {
    const Update update{ports_.announcer};
    if (inHand_.isNew()) return {};
    if (offered_) return resumeNote();
    if (acts_.board().items.size() >= BoardSpec::maxLiveItems) {
        return acts_.conclude(EditorDone{std::unexpected(ActFault::windowFull)});
    }
    auto put = Edits::putUp(acts_.board(), ports_.ids.next(), noteForADay(pm::emptyDoc(), ports_.clock.now()),
                            std::nullopt, acts_.hand());
    return inHand_.beginNote(std::get<Upsert>(put->front().value).item);
}

void EditorModel::offerNote(BoardItem note) {
    const Update update{ports_.announcer};
    offered_ = std::move(note);
    acts_.announce();
}

EditorDone EditorModel::resumeNote() {
    const Update update{ports_.announcer};
    auto note = std::exchange(offered_, std::nullopt);
    if (!note) return {};
    const auto& board = acts_.board();
    // It may have gone up just before the program ended.
    if (board.find(note->id) != nullptr || board.tombstones.contains(note->id)) {
        inHand_.forgetNewNote();
        acts_.announce();
        return {};
    }
    return inHand_.beginNote(std::move(*note));
}

EditorAct EditorModel::performCopies(std::span<const UUID> ids, std::vector<UUID>& copies) {
    auto items = EditorOps::fromBackToFront(acts_.board(), ids);
    if (items.empty()) return std::unexpected(EditFault::noSuchItem);
    const Point offset = EditorOps::duplicateOffset(acts_.board(), ids);
    std::map<UUID, UUID> names;
    for (auto& item : items) {
        item.center = item.center + offset;
        names[item.id] = ports_.ids.next();
    }
    for (const auto& id : ids) copies.push_back(names[id]);
    return acts_.perform(EditorOps::putUpAnew(acts_.board(), items, names, acts_.hand()));
}

std::expected<UUID, EditorFault> EditorModel::duplicate(const UUID& id) {
    const Update update{ports_.announcer};
    std::vector<UUID> copies;
    auto done = doneOf(performCopies({&id, 1}, copies));
    return concludePutUp(copies.empty() ? id : copies.front(), std::move(done));
}

// Acts on the whole group.

EditorAct EditorModel::carryOutOnGroup(const VerbOn& verbOn) {
    const Update update{ports_.announcer};
    std::vector<Op> ops;
    for (const auto& id : group_.members()) {
        auto one = opsOf(verbOn(id), acts_.board(), acts_.hand());
        if (one) {
            std::ranges::move(*one, std::back_inserter(ops));
        } else if (one.error() != EditFault::wrongKind) {
            return acts_.conclude(EditorAct{std::unexpected(one.error())});
        }
    }
    return acts_.conclude(acts_.perform(std::move(ops)));
}

EditorAct EditorModel::stackGroup(Edits::StackEnd end) {
    const Update update{ports_.announcer};
    const auto ids = group_.members();
    if (Edits::isStacked(acts_.board(), ids, end)) return std::nullopt;
    return acts_.conclude(acts_.perform(Edits::stack(acts_.board(), ids, end, acts_.hand())));
}

EditorAct EditorModel::duplicateGroup() {
    const Update update{ports_.announcer};
    std::vector<UUID> copies;
    auto done = performCopies(group_.members(), copies);
    if (done) group_.select(std::move(copies));
    return acts_.conclude(std::move(done));
}

EditorAct EditorModel::giveHeart(const UUID& id) {
    const Update update{ports_.announcer};
    const auto* const item = acts_.board().find(id);
    if (item == nullptr) return acts_.conclude(EditorAct{std::unexpected(EditFault::noSuchItem)});
    if (Edits::isLocked(acts_.board(), *item)) return acts_.conclude(EditorAct{std::unexpected(EditFault::locked)});
    const UUID heartId = ports_.ids.next();
    auto heart = heartFor(acts_.board(), *item, heartId);
    if (!heart) return acts_.conclude(EditorAct{std::unexpected(heart.error())});
    return acts_.conclude(acts_.perform(EditorOps::putUpInk(acts_.board(), heartId, std::move(*heart), acts_.hand())));
}

EditorDone EditorModel::replacePayload(const UUID& id, Payload payload) {
    const Update update{ports_.announcer};
    return acts_.conclude(
        doneOf(acts_.perform(Edits::changePayload(acts_.board(), id, std::move(payload), acts_.hand()))));
}

EditorAct EditorModel::takeBack(UndoHistory::Way way) {
    const Update update{ports_.announcer};
    if (pen_.session()) {
        way == UndoHistory::Way::undo ? pen_.undo() : pen_.redo();
        return std::nullopt;
    }
    // What is typed on a new note is no act yet; the field takes it back, letter by letter.
    if (inHand_.isNew()) return std::nullopt;
    // What was typed is taken back first, as the latest act.
    if (const auto written = inHand_.writeNow(); !written) {
        return acts_.conclude(EditorAct{std::unexpected(written.error())});
    }
    auto taken = acts_.takeBack(way);
    if (taken) inHand_.showBoardsContent();
    return acts_.conclude(std::move(taken));
}

} // namespace lumaro
