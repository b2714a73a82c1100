// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/DoodleSession.h"

#include "Lumaro/Model/Editor/EditorOps.h"
#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Geometry/InkEraser.h"

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

std::expected<void, DoodleFault> DoodleSession::penDown(Point place, Pen pen, Touch touch) {
    penUp();
    if (strokes().size() >= BoardSpec::maxStrokesPerDoodle) return std::unexpected(DoodleFault::tooManyStrokes);
    line_ = Line{.pen = std::move(pen), .samples = {{place, touch.seconds, touch.pressure}}};
    return {};
}

void DoodleSession::penTo(Point place, Touch touch) {
    if (!line_) return;
    line_->samples.push_back({place, touch.seconds, touch.pressure});
    if (line_->samples.size() < maxSamples) return;
    const Pen pen = line_->pen;
    // One stroke too many leaves the pen up.
    static_cast<void>(penDown(place, pen, touch));
}

std::optional<InkStroke> DoodleSession::line() const {
    if (!line_) return std::nullopt;
    return penStroke(line_->samples, line_->pen.ink, line_->pen.width);
}

void DoodleSession::penUp() {
    if (sweep_) {
        auto left = std::move(*sweep_);
        sweep_.reset();
        history_.record(std::move(left));
    }
    auto stroke = line();
    line_.reset();
    if (!stroke || stroke->points.empty()) return;
    auto strokes = history_.strokes();
    strokes.push_back(std::move(*stroke));
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
    const auto* const surface = surface_ ? board.find(*surface_) : nullptr;
    const bool hasSurface = surface != nullptr && !Edits::isLocked(board, *surface);
    auto made = makeDoodle(strokes(), hasSurface ? surface_ : std::nullopt);
    if (!made) return std::unexpected(made.error());
    return EditorOps::putUpInk(board, newId, std::move(*made), hand);
}

} // namespace lumaro
