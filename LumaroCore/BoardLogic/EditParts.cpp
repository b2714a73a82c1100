// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/EditParts.h"

#include "LumaroCore/BoardLogic/Stacking.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace lumaro::Edits {
namespace {

using namespace std::chrono_literals;

bool looksLike(BoardItem item, const BoardItem& other) {
    item.setAuthor(other.author);
    item.updatedAt = other.updatedAt;
    return item == other;
}

bool isIdle(const Op& op, const Board& board) {
    return std::visit(Overloaded{[&](const Upsert& upsert) {
                                     const auto* item = board.find(upsert.item.id);
                                     return item != nullptr && looksLike(upsert.item, *item);
                                 },
                                 [](const Delete&) { return false; },
                                 [&](const SetBackground& set) { return set.background == board.background; }},
                      op.value);
}

Point turned(Point arm, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {arm.x * std::cos(angle) - arm.y * std::sin(angle), arm.x * std::sin(angle) + arm.y * std::cos(angle)};
}

} // namespace

bool isDrawnOn(const BoardItem& item, const UUID& id) {
    const auto* doodle = item.payload.as<DoodlePayload>();
    return doodle != nullptr && doodle->on == id;
}

bool isOnLocked(const Board& board, const Payload& payload) {
    const auto* const doodle = payload.as<DoodlePayload>();
    const auto* const surface = doodle != nullptr && doodle->on ? board.find(*doodle->on) : nullptr;
    return surface != nullptr && surface->isLocked;
}

bool isLocked(const Board& board, const BoardItem& item) {
    return item.isLocked || isOnLocked(board, item.payload);
}

Instant stamp(Instant now, Instant previous) {
    const auto after = Wire::truncatedToMilliseconds(saturatingAdd(Wire::truncatedToMilliseconds(previous), 1ms));
    return std::max(Wire::truncatedToMilliseconds(now), after);
}

Op written(const Board& board, BoardItem item, Hand hand, std::optional<Instant> buriedAt) {
    item.setAuthor(hand.author);
    item.updatedAt = Wire::truncatedToMilliseconds(hand.now);
    const auto follow = [&](Instant version) { item.updatedAt = stamp(item.updatedAt, version); };
    if (const auto* replaced = board.find(item.id)) follow(replaced->updatedAt);
    const auto grave = board.tombstones.find(item.id);
    if (grave != board.tombstones.end()) follow(grave->second);
    if (buriedAt) follow(*buriedAt);
    return {Upsert{std::move(item)}};
}

void overlay(Board& board, std::span<const Op> ops) {
    for (const auto& op : ops) {
        const auto* upsert = std::get_if<Upsert>(&op.value);
        if (upsert == nullptr) continue;
        const auto place = std::ranges::find(board.items, upsert->item.id, &BoardItem::id);
        if (place != board.items.end()) {
            *place = upsert->item;
        } else {
            board.items.push_back(upsert->item);
        }
    }
}

std::vector<Op> withoutIdle(std::vector<Op> ops, const Board& board) {
    std::erase_if(ops, [&](const Op& op) { return isIdle(op, board); });
    return ops;
}

std::vector<Op> changes(const Board& before, const Board& after, Hand hand) {
    std::vector<Op> ops;
    ops.reserve(after.items.size());
    for (const auto& item : after.items) ops.push_back(written(before, item, hand));
    return withoutIdle(std::move(ops), before);
}

Instant lifespanFrom(Instant now) {
    return Wire::truncatedToMilliseconds(saturatingAdd(now, BoardSpec::noteLifespan));
}

Point heldOnCanvas(Point place) {
    return {std::clamp(place.x, 0.0, BoardSpec::canvasSize.width),
            std::clamp(place.y, 0.0, BoardSpec::canvasSize.height)};
}

std::vector<Op> carried(const Board& board, const BoardItem& before, BoardItem item, Hand hand) {
    const double turn = item.rotationDegrees - before.rotationDegrees;
    const double growth = BoardSpec::isValidScale(before.scale) ? item.scale / before.scale : 1;
    const Point from = before.center;
    const Point to = item.center;
    std::vector<Op> ops;
    ops.push_back(written(board, std::move(item), hand));
    for (const auto& other : board.items) {
        if (!isDrawnOn(other, before.id)) continue;
        BoardItem doodle = other;
        doodle.center = to + turned(doodle.center - from, turn) * growth;
        doodle.rotationDegrees = BoardSpec::clampRotation(doodle.rotationDegrees + turn);
        doodle.scale = BoardSpec::clampScale(doodle.scale * growth);
        ops.push_back(written(board, std::move(doodle), hand));
    }
    return ops;
}

std::expected<Board, EditFault> held(const Board& board, const UUID& id, const Placement& placement, Hand hand) {
    Board after = board;
    std::optional<EditFault> fault;
    const auto lay = [&](const Result& ops) {
        if (ops) return overlay(after, *ops);
        fault = ops.error();
    };
    if (board.find(id) == nullptr) return std::unexpected(EditFault::noSuchItem);
    if (placement.center) lay(move(after, id, *placement.center, hand));
    if (placement.rotationDegrees) lay(turn(after, id, *placement.rotationDegrees, hand));
    if (placement.scale) lay(resize(after, id, *placement.scale, hand));
    if (fault) return std::unexpected(*fault);
    return after;
}

Result place(const Board& board, const UUID& id, const Placement& placement, Hand hand) {
    auto after = held(board, id, placement, hand);
    if (!after) return std::unexpected(after.error());
    if (!isStacked(*after, {&id, 1}, StackEnd::front)) {
        if (const auto raised = raise(*after, id, hand)) overlay(*after, *raised);
    }
    return changes(board, *after, hand);
}

Payload withFreshLifespan(Payload payload, Instant now) {
    const auto* note = payload.as<NotePayload>();
    if (note == nullptr || note->isKept()) return payload;
    NotePayload renewed = *note;
    renewed.expiresAt = lifespanFrom(now);
    return Payload{std::move(renewed)};
}

} // namespace lumaro::Edits
