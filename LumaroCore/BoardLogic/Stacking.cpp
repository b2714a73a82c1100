// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Stacking.h"

#include "LumaroCore/BoardLogic/EditParts.h"

#include <algorithm>
#include <limits>
#include <ranges>
#include <tuple>

namespace lumaro::Edits {
namespace {

constexpr auto lowestZ = std::numeric_limits<std::int64_t>::min();
constexpr auto highestZ = std::numeric_limits<std::int64_t>::max();

bool isOneOf(std::span<const UUID> ids, const UUID& id) {
    return std::ranges::find(ids, id) != ids.end();
}

const BoardItem* surfaceOf(const Board& board, const BoardItem& item) {
    const auto* const doodle = item.payload.as<DoodlePayload>();
    return doodle != nullptr && doodle->on ? board.find(*doodle->on) : nullptr;
}

bool goesAlong(const Board& board, std::span<const UUID> ids, const BoardItem& item) {
    const auto* const surface = surfaceOf(board, item);
    return isOneOf(ids, item.id) || (surface != nullptr && isOneOf(ids, surface->id));
}

// The items and the doodles on them from back to front. Of two at one height the later one is in front.
std::vector<BoardItem> stackOf(const Board& board, std::span<const UUID> ids) {
    struct Layer {
        std::int64_t z;
        bool isDrawn;
        const BoardItem* item;
    };
    std::vector<Layer> layers;
    for (const auto& item : board.items) {
        if (!goesAlong(board, ids, item)) continue;
        const auto* const surface = surfaceOf(board, item);
        layers.push_back({surface == nullptr ? item.z : std::max(item.z, surface->z), surface != nullptr, &item});
    }
    std::ranges::stable_sort(layers, {},
                             [](const Layer& layer) { return std::tuple{layer.z, layer.isDrawn, layer.item->z}; });
    std::vector<BoardItem> items;
    items.reserve(layers.size());
    for (const auto& layer : layers) items.push_back(*layer.item);
    return items;
}

struct Heights {
    std::int64_t lowest = highestZ;
    std::int64_t highest = lowestZ;

    void include(std::int64_t z) {
        lowest = std::min(lowest, z);
        highest = std::max(highest, z);
    }
    bool isEmpty() const { return lowest > highest; }
};

Heights heightsOf(const Board& board, std::span<const UUID> ids, bool areTheOnes) {
    Heights heights;
    for (const auto& item : board.items) {
        if (goesAlong(board, ids, item) == areTheOnes) heights.include(item.z);
    }
    return heights;
}

// The heights of `count` items, from back to front, beyond those of the others; level with them at the end of the
// range.
std::vector<std::int64_t> heightsBeyond(const Heights& others, std::size_t count, StackEnd end) {
    std::vector<std::int64_t> heights(count);
    if (end == StackEnd::front) {
        auto z = others.isEmpty() ? 0 : others.highest;
        for (auto& height : heights) height = z = z == highestZ ? highestZ : z + 1;
    } else {
        auto z = others.isEmpty() ? 0 : others.lowest;
        for (auto& height : heights | std::views::reverse) height = z = z == lowestZ ? lowestZ : z - 1;
    }
    return heights;
}

} // namespace

Result stack(const Board& board, std::span<const UUID> ids, StackEnd end, Hand hand) {
    for (const auto& id : ids) {
        const auto* const item = board.find(id);
        if (item == nullptr) return std::unexpected(EditFault::noSuchItem);
        if (isLocked(board, *item)) return std::unexpected(EditFault::locked);
    }
    auto items = stackOf(board, ids);
    const auto heights = heightsBeyond(heightsOf(board, ids, false), items.size(), end);
    std::vector<Op> ops;
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].z = heights[i];
        ops.push_back(written(board, std::move(items[i]), hand));
    }
    return ops;
}

bool isStacked(const Board& board, std::span<const UUID> ids, StackEnd end) {
    const auto own = heightsOf(board, ids, true);
    const auto others = heightsOf(board, ids, false);
    if (own.isEmpty() || others.isEmpty()) return true;
    return end == StackEnd::front ? own.lowest > others.highest : own.highest < others.lowest;
}

} // namespace lumaro::Edits
