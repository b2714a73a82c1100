// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/EditorOps.h"

#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace lumaro::EditorOps {
namespace {

using namespace std::chrono_literals;

constexpr Point duplicateStep{32, 32};
// A middle closer to another's hides it.
constexpr double duplicateReach = 16;

Instant after(Instant version) {
    return Wire::truncatedToMilliseconds(saturatingAdd(Wire::truncatedToMilliseconds(version), 1ms));
}

bool looksLike(BoardItem item, const BoardItem& other) {
    item.author = other.author;
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

bool isOnCanvas(Point place) {
    return place.x >= 0 && place.x <= BoardSpec::canvasSize.width && place.y >= 0 &&
           place.y <= BoardSpec::canvasSize.height;
}

} // namespace

bool isDrawnOn(const BoardItem& item, const UUID& id) {
    const auto* doodle = item.payload.as<DoodlePayload>();
    return doodle != nullptr && doodle->on == id;
}

std::vector<BoardItem> withDoodles(const Board& board, const UUID& id) {
    const auto* item = board.find(id);
    if (item == nullptr) return {};
    std::vector<BoardItem> found{*item};
    for (const auto& other : board.items) {
        if (other.id != id && isDrawnOn(other, id)) found.push_back(other);
    }
    return found;
}

bool isInFront(const Board& board, const UUID& id) {
    auto lowest = std::numeric_limits<std::int64_t>::max();
    auto highestOther = std::numeric_limits<std::int64_t>::min();
    for (const auto& item : board.items) {
        if (item.id == id || isDrawnOn(item, id)) {
            lowest = std::min(lowest, item.z);
        } else {
            highestOther = std::max(highestOther, item.z);
        }
    }
    return lowest > highestOther;
}

Op written(const Board& board, BoardItem item, Hand hand, std::optional<Instant> buriedAt) {
    item.author = hand.author;
    item.updatedAt = Wire::truncatedToMilliseconds(hand.now);
    const auto follow = [&](Instant version) { item.updatedAt = std::max(item.updatedAt, after(version)); };
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

std::vector<Op> changes(const Board& before, const Board& after, Hand hand) {
    std::vector<Op> ops;
    ops.reserve(after.items.size());
    for (const auto& item : after.items) ops.push_back(written(before, item, hand));
    return withoutIdle(std::move(ops), before);
}

std::vector<Op> withoutIdle(std::vector<Op> ops, const Board& board) {
    std::erase_if(ops, [&](const Op& op) { return isIdle(op, board); });
    return ops;
}

Payload fresh(Payload payload, Instant now) {
    const auto* note = payload.as<NotePayload>();
    if (note == nullptr || note->isKept()) return payload;
    NotePayload renewed = *note;
    renewed.expiresAt = Wire::truncatedToMilliseconds(saturatingAdd(now, BoardSpec::noteLifespan));
    return Payload{std::move(renewed)};
}

Edits::Result putUpAnew(const Board& board, std::span<const BoardItem> items, const std::map<UUID, UUID>& names,
                        Hand hand) {
    const auto nameOf = [&](const UUID& id) {
        const auto renamed = names.find(id);
        return renamed == names.end() ? id : renamed->second;
    };
    Board filling = board;
    std::vector<Op> ops;
    for (const auto& item : items) {
        Payload payload = fresh(item.payload, hand.now);
        if (const auto* doodle = payload.as<DoodlePayload>(); doodle != nullptr && doodle->on) {
            DoodlePayload redrawn = *doodle;
            redrawn.on = nameOf(*doodle->on);
            payload = Payload{std::move(redrawn)};
        }
        auto put = Edits::putUp(filling, nameOf(item.id), std::move(payload), item.center, hand);
        if (!put) return put;
        auto& copy = std::get<Upsert>(put->front().value).item;
        copy.rotationDegrees = item.rotationDegrees;
        copy.scale = item.scale;
        overlay(filling, *put);
        ops.push_back(std::move(put->front()));
    }
    return ops;
}

Point duplicateOffset(const Board& board, const BoardItem& item) {
    // Towards the far corner, and back from where the canvas ends.
    for (const double direction : {1.0, -1.0}) {
        for (int steps = 1; isOnCanvas(item.center + duplicateStep * (direction * steps)); ++steps) {
            const Point offset = duplicateStep * (direction * steps);
            const auto hides = [&](const BoardItem& other) {
                return distance(other.center, item.center + offset) < duplicateReach;
            };
            if (std::ranges::none_of(board.items, hides)) return offset;
        }
    }
    return {};
}

} // namespace lumaro::EditorOps
