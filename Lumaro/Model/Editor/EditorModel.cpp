// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/EditorModel.h"

#include "Lumaro/Model/Editor/EditorOps.h"

#include <map>
#include <string>
#include <utility>

namespace lumaro {
namespace {

using Update = Announcer::Update;

// What a pasted note looks like.
constexpr std::string_view pastedPaper = "butter";
constexpr std::string_view pastedPin = "brass";

bool hasNoText(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

} // namespace

EditorModel::EditorModel(Ports ports)
    : ports_(ports), acts_({.board = ports.board, .clock = ports.clock, .announcer = ports.announcer},
                           [this] { inHand_.follow(ItemInHand::By::oneself); }),
      inHand_(acts_, ports.ids, ports.sleeper), pen_(acts_, ports.ids) {
}

// For the application.

void EditorModel::boardChanged() {
    const Update update{ports_.announcer};
    inHand_.follow(ItemInHand::By::others);
    acts_.announce();
}

void EditorModel::discardDraft() {
    const Update update{ports_.announcer};
    inHand_.cancel();
    inHand_.select(std::nullopt);
    pen_.cancel();
    acts_.forget();
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
    if (gone != nullptr && inHand_.draft() && inHand_.draft()->id() == gone->item) {
        static_cast<void>(inHand_.writeNow());
    }
    return acts_.conclude(acts_.perform(opsOf(verb, acts_.board(), acts_.hand())));
}

std::expected<UUID, EditorFault> EditorModel::concludePutUp(const UUID& id, EditorDone done) {
    const auto concluded = acts_.conclude(std::move(done));
    if (!concluded) return std::unexpected(concluded.error());
    inHand_.select(id);
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
    if (hasNoText(text)) return concludePutUp({}, std::unexpected(ActFault::invalid));
    return putUp(NotePayload{.pm = pm::docOfLines(text),
                             .paper = std::string{pastedPaper},
                             .pin = std::string{pastedPin},
                             .expiresAt = ports_.clock.now()},
                 at);
}

std::expected<UUID, EditorFault> EditorModel::duplicate(const UUID& id) {
    const Update update{ports_.announcer};
    auto copies = EditorOps::withDoodles(acts_.board(), id);
    if (copies.empty()) return concludePutUp(id, std::unexpected(EditFault::noSuchItem));
    const Point offset = EditorOps::duplicateOffset(acts_.board(), copies.front());
    std::map<UUID, UUID> names;
    for (auto& item : copies) {
        item.center = item.center + offset;
        names[item.id] = ports_.ids.next();
    }
    return concludePutUp(names[id],
                         doneOf(acts_.perform(EditorOps::putUpAnew(acts_.board(), copies, names, acts_.hand()))));
}

EditorDone EditorModel::replacePayload(const UUID& id, Payload payload) {
    const Update update{ports_.announcer};
    return acts_.conclude(
        doneOf(acts_.perform(Edits::changePayload(acts_.board(), id, std::move(payload), acts_.hand()))));
}

EditorAct EditorModel::takeBack(UndoHistory::Way way) {
    const Update update{ports_.announcer};
    // What was typed is taken back first, as the latest act.
    if (const auto written = inHand_.writeNow(); !written) {
        return acts_.conclude(EditorAct{std::unexpected(written.error())});
    }
    auto taken = acts_.takeBack(way);
    if (taken) inHand_.showBoardsContent();
    return acts_.conclude(std::move(taken));
}

} // namespace lumaro
