// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Placing.h"

#include "LumaroCore/Support/Fatal.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <span>
#include <vector>

namespace lumaro::BoardLogic {
namespace {

std::int64_t above(std::int64_t z) {
    if (z == std::numeric_limits<std::int64_t>::max()) fatal("no stacking value above the top item");
    return z + 1;
}

constexpr Point canvasCentre = BoardSpec::canvasRect.centre();
constexpr int rings = 8;
constexpr double ringStepX = 96;
constexpr double ringStepY = 64;
constexpr double canvasMargin = 24;
// What lying wholly over one other item costs, in points of distance from the middle.
constexpr double overlapWeight = 100000;

// Where the centre of something this long may lie along an axis. The far limit counts last: something longer than the
// canvas then reaches over its near edge.
double heldInside(double place, double length, double canvasLength) {
    return std::min(std::max(place, length / 2 + canvasMargin), canvasLength - length / 2 - canvasMargin);
}

double score(Point candidate, Size size, double area, std::span<const Rect> footprints) {
    const Rect place = Rect::centredOn(candidate, size);
    double covered = 0;
    for (const auto& footprint : footprints) covered += sharedArea(place, footprint);
    return distance(candidate, canvasCentre) + covered / area * overlapWeight;
}

} // namespace

std::int64_t nextZ(const Board& board) {
    const auto top = std::ranges::max_element(board.items, {}, &BoardItem::z);
    return top == board.items.end() ? 1 : above(top->z);
}

BoardItem bumpingZ(BoardItem item, const Board& board) {
    const BoardItem* top = nullptr;
    for (const auto& other : board.items) {
        if (other.id != item.id && (top == nullptr || other.z > top->z)) top = &other;
    }
    item.z = top == nullptr ? 1 : above(top->z);
    return item;
}

double seededTilt(const UUID& id) {
    std::uint64_t hash = 0xcbf29ce484222325ULL;
    for (const auto byte : id.bytes) hash = (hash ^ byte) * 0x100000001b3ULL;
    const double fraction = static_cast<double>(hash >> 11) * 0x1p-53;
    return (2 * fraction - 1) * BoardSpec::seededTiltDegrees;
}

Point openSpot(Size size, const Board& board) {
    std::vector<Rect> footprints;
    footprints.reserve(board.items.size());
    for (const auto& item : board.items) {
        footprints.push_back(Rect::centredOn(item.center, item.naturalSize() * item.scale));
    }
    const double area = std::max(size.width * size.height, 1.0);

    Point best = canvasCentre;
    double lowest = std::numeric_limits<double>::infinity();
    for (int ring = 0; ring < rings; ++ring) {
        const int places = ring == 0 ? 1 : 4 * ring + 8;
        for (int place = 0; place < places; ++place) {
            const double angle = 2 * std::numbers::pi * place / places;
            const double reach = ring;
            const Point candidate{heldInside(canvasCentre.x + ringStepX * reach * std::cos(angle), size.width,
                                             BoardSpec::canvasSize.width),
                                  heldInside(canvasCentre.y + ringStepY * reach * std::sin(angle), size.height,
                                             BoardSpec::canvasSize.height)};
            const double found = score(candidate, size, area, footprints);
            if (found < lowest) {
                lowest = found;
                best = candidate;
            }
        }
    }
    return best;
}

} // namespace lumaro::BoardLogic
