// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Draft.h"

#include "Lumaro/Model/EditorOps.h"
#include "LumaroCore/Support/Overloaded.h"

#include <cmath>
#include <map>
#include <utility>

namespace lumaro {
namespace {

double snappedTilt(double degrees) {
    // Adding zero turns a negative zero into zero.
    const double snapped = std::round(degrees / BoardSpec::rotationSnapDegrees) * BoardSpec::rotationSnapDegrees + 0.0;
    return BoardSpec::clampRotation(snapped);
}

void overlayIfAny(Board& board, const Edits::Result& ops) {
    if (ops) EditorOps::overlay(board, *ops);
}

} // namespace

std::optional<Draft> Draft::of(const Board& shown, const UUID& id) {
    auto held = EditorOps::withDoodles(shown, id);
    if (held.empty()) return std::nullopt;
    return Draft{std::move(held)};
}

std::vector<BoardItem> Draft::items() const {
    Board own;
    own.items = held_;
    const Hand hand{.author = held_.front().author, .now = held_.front().updatedAt};
    own = placedOn(std::move(own), hand);
    overlayIfAny(own, contentOps(own, hand));
    return std::move(own.items);
}

Draft::Done Draft::moveTo(Point center) {
    if (!isFinite(center)) return std::unexpected(EditFault::notFinite);
    center_ = center;
    return {};
}

Draft::Done Draft::turnTo(double degrees) {
    if (!std::isfinite(degrees)) return std::unexpected(EditFault::notFinite);
    rotationDegrees_ = snappedTilt(degrees);
    return {};
}

Draft::Done Draft::resizeTo(double scale) {
    if (!std::isfinite(scale)) return std::unexpected(EditFault::notFinite);
    if (!BoardSpec::canResize(held_.front().kind())) return std::unexpected(EditFault::cannotResize);
    scale_ = scale;
    return {};
}

Draft::Done Draft::changeText(PMNode text) {
    if (held_.front().kind() != ItemKind::note) return std::unexpected(EditFault::wrongKind);
    content_ = std::move(text);
    isWritten_ = false;
    return {};
}

Draft::Done Draft::changePayload(Payload payload) {
    if (held_.front().kind() != payload.kind()) return std::unexpected(EditFault::wrongKind);
    content_ = std::move(payload);
    isWritten_ = false;
    return {};
}

void Draft::follow(const Board& shown) {
    auto held = EditorOps::withDoodles(shown, id());
    isGone_ = held.empty();
    if (!isGone_) held_ = std::move(held);
}

void Draft::dropPlace() {
    center_.reset();
    rotationDegrees_.reset();
    scale_.reset();
    isTouched_ = false;
}

// A finite place, tilt and scale on an item that is there cannot fail; without it there is nothing to place.
Board Draft::placedOn(Board board, Hand hand) const {
    if (center_) overlayIfAny(board, Edits::move(board, id(), *center_, hand));
    if (rotationDegrees_) overlayIfAny(board, Edits::turn(board, id(), *rotationDegrees_, hand));
    if (scale_) overlayIfAny(board, Edits::resize(board, id(), *scale_, hand));
    return board;
}

Edits::Result Draft::placing(const Board& board, Hand hand) const {
    if (board.find(id()) == nullptr) return std::unexpected(EditFault::noSuchItem);
    Board after = placedOn(board, hand);
    if (isTouched_ && !EditorOps::isInFront(after, id())) overlayIfAny(after, Edits::raise(after, id(), hand));
    return EditorOps::changes(board, after, hand);
}

Edits::Result Draft::contentOps(const Board& board, Hand hand) const {
    if (!content_) return std::vector<Op>{};
    return std::visit(
        Overloaded{[&](const PMNode& text) { return Edits::changeText(board, id(), text, hand); },
                   [&](const Payload& payload) { return Edits::changePayload(board, id(), payload, hand); }},
        *content_);
}

Edits::Result Draft::writing(const Board& board, Hand hand) const {
    if (!hasUnwritten()) return std::vector<Op>{};
    return contentOps(board, hand);
}

Edits::Result Draft::puttingBack(const Board& board, UUIDSource& ids, Hand hand) const {
    std::map<UUID, UUID> names;
    for (const auto& item : held_) {
        if (!board.tombstones.contains(item.id)) names[item.id] = ids.next();
    }
    return EditorOps::putUpAnew(board, items(), names, hand);
}

} // namespace lumaro
