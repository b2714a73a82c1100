// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Geometry/ItemAt.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Geometry/Doodle.h"
#include "LumaroCore/Geometry/InkEraser.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumaro {
namespace {

bool isOnPaper(const BoardItem& item, Point place) {
    const double angle = -item.rotationDegrees * std::numbers::pi / 180;
    const Point away = place - item.center;
    const Point upright{away.x * std::cos(angle) - away.y * std::sin(angle),
                        away.x * std::sin(angle) + away.y * std::cos(angle)};
    const Size size = item.naturalSize() * item.scale;
    return std::abs(upright.x) <= size.width / 2 && std::abs(upright.y) <= size.height / 2;
}

bool isAt(const BoardItem& item, Point place, double reach) {
    const auto* const doodle = item.payload.as<DoodlePayload>();
    if (doodle == nullptr) return isOnPaper(item, place);
    const auto strokes = canvasStrokes(*doodle, item.center, item.rotationDegrees, item.scale);
    return std::ranges::any_of(strokes, [&](const InkStroke& stroke) { return inkHit(stroke, place, reach); });
}

} // namespace

std::optional<UUID> itemAt(const Board& board, Point place, double reach) {
    const BoardItem* front = nullptr;
    for (const auto& item : board.items) {
        // Of two at one height the later one is painted over the other.
        if ((front == nullptr || item.z >= front->z) && isAt(item, place, reach)) front = &item;
    }
    return front == nullptr ? std::nullopt : std::optional{front->id};
}

Rect boundsOf(const BoardItem& item) {
    const double angle = item.rotationDegrees * std::numbers::pi / 180;
    const Size size = item.naturalSize() * item.scale;
    const double across = std::abs(std::cos(angle));
    const double along = std::abs(std::sin(angle));
    return Rect::centredOn(item.center,
                           {size.width * across + size.height * along, size.width * along + size.height * across});
}

std::vector<UUID> itemsWithin(const Board& board, Rect area) {
    std::vector<UUID> ids;
    for (const auto& item : board.items) {
        const Point away = item.center - area.origin;
        const bool isIn = away.x >= 0 && away.x <= area.size.width && away.y >= 0 && away.y <= area.size.height;
        if (isIn) ids.push_back(item.id);
    }
    return ids;
}

std::vector<UUID> readingOrder(const Board& board) {
    std::vector<const BoardItem*> items;
    items.reserve(board.items.size());
    for (const auto& item : board.items) items.push_back(&item);
    std::ranges::stable_sort(items, {}, [](const BoardItem* item) { return item->center.y; });
    for (auto row = items.begin(); row != items.end();) {
        const double top = (*row)->center.y;
        const auto end = std::find_if(row, items.end(), [top](const BoardItem* item) {
            return item->center.y - top >= BoardSpec::noteSize.height / 2;
        });
        std::ranges::stable_sort(row, end, {}, [](const BoardItem* item) { return item->center.x; });
        row = end;
    }
    std::vector<UUID> ids;
    ids.reserve(items.size());
    for (const auto* const item : items) ids.push_back(item->id);
    return ids;
}

} // namespace lumaro
