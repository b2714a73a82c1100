// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/EditorOps.h"

#include "LumaroCore/BoardLogic/EditParts.h"

#include <algorithm>
#include <iterator>
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

Edits::Result putUpInk(const Board& board, const UUID& id, PlacedDoodle ink, Hand hand) {
    auto put = Edits::putUp(board, id, Payload{std::move(ink.payload)}, ink.center, hand);
    if (put) std::get<Upsert>(put->front().value).item.rotationDegrees = 0;
    return put;
}

Point duplicateOffset(const Board& board, std::span<const UUID> ids) {
    std::vector<Point> places;
    for (const auto& id : ids) {
        if (const auto* const item = board.find(id)) places.push_back(item->center);
    }
    const auto areOnCanvas = [&](Point offset) {
        return std::ranges::all_of(places, [&](Point place) { return isOnCanvas(place + offset); });
    };
    const auto hides = [&](const BoardItem& other, Point offset) {
        return std::ranges::any_of(
            places, [&](Point place) { return distance(other.center, place + offset) < duplicateReach; });
    };
    if (places.empty()) return {};
    // Towards the far corner, and back from where the canvas ends.
    for (const double direction : {1.0, -1.0}) {
        for (int steps = 1; areOnCanvas(duplicateStep * (direction * steps)); ++steps) {
            const Point offset = duplicateStep * (direction * steps);
            if (std::ranges::none_of(board.items, [&](const BoardItem& other) { return hides(other, offset); })) {
                return offset;
            }
        }
    }
    return {};
}

std::vector<BoardItem> fromBackToFront(const Board& board, std::span<const UUID> ids) {
    std::vector<const BoardItem*> order;
    for (const auto& item : board.items) {
        if (std::ranges::find(ids, item.id) != ids.end()) order.push_back(&item);
    }
    std::ranges::stable_sort(order, {}, &BoardItem::z);
    std::vector<BoardItem> items;
    for (const auto* const item : order) std::ranges::move(withDoodles(board, item->id), std::back_inserter(items));
    return items;
}

} // namespace lumaro::EditorOps
