// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/Draft.h"

#include "Lumaro/Model/Editor/EditorOps.h"
#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace lumaro {
namespace {

Board unlocked(Board board, const UUID& id) {
    const auto item = std::ranges::find(board.items, id, &BoardItem::id);
    if (item != board.items.end()) item->isLocked = false;
    return board;
}

} // namespace

std::optional<Draft> Draft::of(const Board& shown, const UUID& id) {
    auto held = EditorOps::withDoodles(shown, id);
    if (held.empty()) return std::nullopt;
    return Draft{std::move(held)};
}

Draft Draft::ofNew(BoardItem item) {
    Draft draft{{std::move(item)}};
    draft.isNew_ = true;
    return draft;
}

std::vector<BoardItem> Draft::items() const {
    Board own;
    own.items = held_;
    const Hand hand{.author = held_.front().author, .now = held_.front().updatedAt};
    // A finite placement of an item that is there cannot fail.
    own = Edits::held(own, id(), placement_, hand).value_or(own);
    if (const auto content = contentOps(own, hand)) Edits::overlay(own, *content);
    return std::move(own.items);
}

Draft::Done Draft::moveTo(Point center) {
    if (!isFinite(center)) return std::unexpected(EditFault::notFinite);
    placement_.center = center;
    return {};
}

Draft::Done Draft::turnTo(double degrees) {
    if (!std::isfinite(degrees)) return std::unexpected(EditFault::notFinite);
    placement_.rotationDegrees = degrees;
    return {};
}

Draft::Done Draft::resizeTo(double scale) {
    if (!std::isfinite(scale)) return std::unexpected(EditFault::notFinite);
    if (!BoardSpec::canResize(held_.front().kind())) return std::unexpected(EditFault::cannotResize);
    placement_.scale = scale;
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

Draft::Done Draft::changeLook(std::optional<std::string> paper, std::optional<std::string> pin) {
    const auto* const note = held_.front().payload.as<NotePayload>();
    if (note == nullptr) return std::unexpected(EditFault::wrongKind);
    auto changed = *note;
    if (paper) changed.paper = std::move(*paper);
    if (pin) changed.pin = std::move(*pin);
    held_.front().payload = Payload{std::move(changed)};
    return {};
}

void Draft::follow(const Board& shown) {
    auto held = EditorOps::withDoodles(shown, id());
    if (isNew_ && held.empty()) return;
    isNew_ = false;
    isGone_ = held.empty();
    if (!isGone_) held_ = std::move(held);
}

void Draft::dropPlace() {
    placement_ = {};
    isTouched_ = false;
}

Edits::Result Draft::placing(const Board& board, Hand hand) const {
    if (board.find(id()) == nullptr) return std::unexpected(EditFault::noSuchItem);
    if (!isTouched_) return std::vector<Op>{};
    return Edits::place(board, id(), placement_, hand);
}

Edits::Result Draft::contentOps(const Board& board, Hand hand) const {
    if (!content_) return std::vector<Op>{};
    auto ops = std::visit(
        Overloaded{
            [&](const PMNode& text) { return Edits::changeText(unlocked(board, id()), id(), text, hand); },
            [&](const Payload& payload) { return Edits::changePayload(unlocked(board, id()), id(), payload, hand); }},
        *content_);
    if (!ops) return ops;
    for (auto& op : *ops) std::get<Upsert>(op.value).item.isLocked = board.find(id())->isLocked;
    return ops;
}

Edits::Result Draft::writing(const Board& board, Hand hand) const {
    if (!hasUnwritten()) return std::vector<Op>{};
    return contentOps(board, hand);
}

Edits::Result Draft::puttingUp(const Board& board, Hand hand) const {
    return EditorOps::putUpAnew(board, items(), {}, hand);
}

Edits::Result Draft::puttingBack(const Board& board, UUIDSource& ids, Hand hand) const {
    std::map<UUID, UUID> names;
    for (const auto& item : held_) {
        if (!board.tombstones.contains(item.id)) names[item.id] = ids.next();
    }
    return EditorOps::putUpAnew(board, items(), names, hand);
}

} // namespace lumaro
