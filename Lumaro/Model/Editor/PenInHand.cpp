// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/PenInHand.h"

#include <utility>

namespace lumaro {
namespace {

using Update = Announcer::Update;

} // namespace

EditorDone PenInHand::begin(std::optional<UUID> surface) {
    const Update update{acts_.announcer()};
    if (surface && isLocked(*surface)) return acts_.conclude(EditorDone{std::unexpected(EditFault::locked)});
    session_.emplace(surface);
    return acts_.conclude(EditorDone{});
}

EditorDone PenInHand::edit(const UUID& id) {
    const Update update{acts_.announcer()};
    if (isLocked(id)) return acts_.conclude(EditorDone{std::unexpected(EditFault::locked)});
    auto session = DoodleSession::over(acts_.board(), id);
    if (!session) return acts_.conclude(EditorDone{std::unexpected(session.error())});
    session_ = std::move(*session);
    return acts_.conclude(EditorDone{});
}

bool PenInHand::isLocked(const UUID& id) const {
    const auto* const item = acts_.board().find(id);
    return item != nullptr && Edits::isLocked(acts_.board(), *item);
}

EditorDone PenInHand::down(Point place, DoodleSession::Pen pen, DoodleSession::Touch touch) {
    const Update update{acts_.announcer()};
    if (!session_) return std::unexpected(EditFault::noSuchItem);
    const auto down = session_->penDown(place, std::move(pen), touch);
    return acts_.conclude(down ? EditorDone{} : EditorDone{std::unexpected(EditorFault{down.error()})});
}

void PenInHand::moveTo(Point place, DoodleSession::Touch touch) {
    if (!session_) return;
    session_->penTo(place, touch);
    acts_.announce();
}

void PenInHand::up() {
    if (!session_) return;
    session_->penUp();
    acts_.announce();
}

void PenInHand::eraseAlong(Point from, Point to, double radius) {
    if (!session_) return;
    session_->eraseAlong(from, to, radius);
    acts_.announce();
}

void PenInHand::undo() {
    if (!session_) return;
    session_->undo();
    acts_.announce();
}

void PenInHand::redo() {
    if (!session_) return;
    session_->redo();
    acts_.announce();
}

EditorDone PenInHand::finish() {
    const Update update{acts_.announcer()};
    if (!session_) return {};
    auto done = doneOf(acts_.perform(session_->finish(acts_.board(), ids_.next(), acts_.hand())));
    if (done) session_.reset();
    return acts_.conclude(std::move(done));
}

void PenInHand::cancel() {
    session_.reset();
    acts_.announce();
}

} // namespace lumaro
