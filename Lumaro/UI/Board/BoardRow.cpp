// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/UI/Board/BoardRow.h"

#include "Lumaro/UI/Board/CardFaces.h"
#include "Lumaro/UI/Board/SpokenItem.h"
#include "Lumaro/UI/Text.h"
#include "LumaroCore/Support/EnumNames.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace lumaro {
namespace {

/// The rank of each item from back to front; of two at one height the later one is in front.
std::vector<int> ranksOf(const Board& board) {
    std::vector<std::size_t> order(board.items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t row) { return board.items[row].z; });
    std::vector<int> ranks(order.size());
    for (std::size_t rank = 0; rank < order.size(); ++rank) ranks[order[rank]] = static_cast<int>(rank);
    return ranks;
}

const BoardItem& anchorOf(const BoardItem& item, const Board& board) {
    const auto* const doodle = item.payload.as<DoodlePayload>();
    const auto* const surface = doodle != nullptr && doodle->on ? board.find(*doodle->on) : nullptr;
    return surface == nullptr ? item : *surface;
}

Point reachOf(const BoardItem& item) {
    const auto size = item.naturalSize() * item.scale;
    const double angle = item.rotationDegrees * std::numbers::pi / 180;
    const double across = std::abs(std::sin(angle));
    const double along = std::abs(std::cos(angle));
    return Point{size.width * along + size.height * across, size.width * across + size.height * along} * 0.5;
}

bool isTouched(const BoardItem& item, const Board& board, const std::set<UUID>& arriving) {
    return !arriving.empty() && std::ranges::any_of(board.items, [&](const BoardItem& other) {
        const auto* const doodle = other.payload.as<DoodlePayload>();
        return doodle != nullptr && doodle->on == item.id && arriving.contains(other.id);
    });
}

/// A sticker's corner peels while it is in the hand.
ItemFace lifted(ItemFace face) {
    const auto* const sticker = face.as<StickerFace>();
    if (sticker == nullptr) return face;
    auto peeled = *sticker;
    peeled.isLifted = true;
    return peeled;
}

} // namespace

std::vector<BoardRow> rowsOf(const Board& board, const BoardMoves& moves, const LiveContext& live) {
    std::vector<BoardRow> rows;
    rows.reserve(board.items.size());
    const auto ranks = ranksOf(board);
    for (const auto& item : board.items) {
        const auto& anchor = anchorOf(item, board);
        auto face = faceOf(item, live);
        auto words = spoken(item, face, live);
        const bool isInHand = moves.inHand.contains(item.id);
        if (isInHand) face = lifted(std::move(face));
        rows.push_back({.itemId = qText(item.id),
                        .kind = qText(nameOf(item.kind())),
                        .center = item.center,
                        .anchor = anchor.center,
                        .anchorReach = reachOf(anchor),
                        .size = item.naturalSize(),
                        .tilt = item.rotationDegrees,
                        .scale = item.scale,
                        .stack = ranks[rows.size()],
                        .face = std::move(face),
                        .spoken = std::move(words),
                        .isArriving = moves.arriving.contains(item.id),
                        .isFalling = moves.falling.contains(item.id),
                        .isInHand = isInHand,
                        .isTouched = isTouched(item, board, moves.arriving)});
    }
    return rows;
}

} // namespace lumaro
