// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/DoodleSession.h"

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Geometry/InkEraser.h"
#include "LumaroCore/Geometry/InkSmoothing.h"

#include <utility>

namespace lumaro {

std::expected<DoodleSession, EditFault> DoodleSession::over(const Board& board, const UUID& id) {
    const auto* item = board.find(id);
    if (item == nullptr) return std::unexpected(EditFault::noSuchItem);
    const auto* doodle = item->payload.as<DoodlePayload>();
    if (doodle == nullptr) return std::unexpected(EditFault::wrongKind);
    DoodleSession session{doodle->on};
    session.doodle_ = id;
    session.original_ = canvasStrokes(*doodle, item->center, item->rotationDegrees, item->scale);
    session.history_ = InkHistory{session.original_};
    return session;
}

std::expected<void, DoodleFault> DoodleSession::penDown(Point place, Pen pen) {
    penUp();
    if (strokes().size() >= BoardSpec::maxStrokesPerDoodle) return std::unexpected(DoodleFault::tooManyStrokes);
    line_ = InkStroke{.ink = std::move(pen.ink), .width = pen.width, .points = {place}};
    return {};
}

void DoodleSession::penTo(Point place) {
    if (line_) line_->points.push_back(place);
}

void DoodleSession::penUp() {
    if (sweep_) {
        auto left = std::move(*sweep_);
        sweep_.reset();
        history_.record(std::move(left));
    }
    if (!line_) return;
    auto stroke = inkStroke(line_->points, std::move(line_->ink), line_->width);
    line_.reset();
    if (stroke.points.empty()) return;
    auto strokes = history_.strokes();
    strokes.push_back(std::move(stroke));
    history_.record(std::move(strokes));
}

void DoodleSession::eraseAlong(Point from, Point to, double radius) {
    if (line_) penUp();
    sweep_ = eraseInk(strokes(), from, to, radius);
}

void DoodleSession::undo() {
    penUp();
    history_.undo();
}

void DoodleSession::redo() {
    penUp();
    history_.redo();
}

std::expected<std::vector<Op>, EditorFault> DoodleSession::finish(const Board& board, const UUID& newId, Hand hand) {
    penUp();
    if (strokes() == original_) return std::vector<Op>{};
    const auto* doodle = doodle_ ? board.find(*doodle_) : nullptr;
    if (doodle != nullptr) return redraw(board, *doodle, hand);
    if (strokes().empty()) return std::vector<Op>{};
    return putUp(board, newId, hand);
}

std::expected<std::vector<Op>, EditorFault> DoodleSession::redraw(const Board& board, const BoardItem& doodle,
                                                                  Hand hand) const {
    if (strokes().empty()) return Edits::takeDown(board, doodle.id, hand);
    auto made = makeDoodle(strokes(), surface_);
    if (!made) return std::unexpected(made.error());
    BoardItem item = doodle;
    item.center = made->center;
    // Tilt and size are in the strokes now.
    item.rotationDegrees = 0;
    item.scale = 1;
    item.payload = Payload{std::move(made->payload)};
    return std::vector{Edits::written(board, std::move(item), hand)};
}

std::expected<std::vector<Op>, EditorFault> DoodleSession::putUp(const Board& board, const UUID& newId,
                                                                 Hand hand) const {
    const bool hasSurface = surface_ && board.find(*surface_) != nullptr;
    auto made = makeDoodle(strokes(), hasSurface ? surface_ : std::nullopt);
    if (!made) return std::unexpected(made.error());
    auto put = Edits::putUp(board, newId, Payload{std::move(made->payload)}, made->center, hand);
    // Ink stays where it was drawn: no tilt of its own.
    if (put) std::get<Upsert>(put->front().value).item.rotationDegrees = 0;
    return put;
}

} // namespace lumaro
