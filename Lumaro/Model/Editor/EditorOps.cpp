// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/EditorOps.h"

#include "LumaroCore/BoardLogic/EditParts.h"

#include <algorithm>
#include <utility>

namespace lumaro::EditorOps {
namespace {

constexpr Point duplicateStep{32, 32};
// A middle closer to another's hides it.
constexpr double duplicateReach = 16;

bool isOnCanvas(Point place) {
    return place.x >= 0 && place.x <= BoardSpec::canvasSize.width && place.y >= 0 &&
           place.y <= BoardSpec::canvasSize.height;
}

} // namespace

std::vector<BoardItem> withDoodles(const Board& board, const UUID& id) {
    const auto* item = board.find(id);
    if (item == nullptr) return {};
    std::vector<BoardItem> found{*item};
    for (const auto& other : board.items) {
        if (other.id != id && Edits::isDrawnOn(other, id)) found.push_back(other);
    }
    return found;
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
        Payload payload = Edits::withFreshLifespan(item.payload, hand.now);
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
        Edits::overlay(filling, *put);
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
