// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/GroupDraft.h"

#include "LumaroCore/BoardLogic/Stacking.h"
#include "LumaroCore/Geometry/ItemAt.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

using Edits::StackEnd;

/// From the least to the most of something; what is in it changes by one step at a time.
struct Span {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void include(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

std::optional<Rect> rectAround(const Board& board, std::span<const UUID> ids) {
    Span across;
    Span down;
    for (const auto& id : ids) {
        const auto* const item = board.find(id);
        if (item == nullptr) continue;
        const auto [corner, size] = boundsOf(*item);
        across.include(corner.x);
        across.include(corner.x + size.width);
        down.include(corner.y);
        down.include(corner.y + size.height);
    }
    if (across.low > across.high) return std::nullopt;
    return Rect{{across.low, down.low}, {across.high - across.low, down.high - down.low}};
}

// How far the places are from the nearest ones on a side of the canvas; as far as they go when they do not fit.
double shiftOnto(Span places, double length) {
    if (places.low < 0) return -places.low;
    return places.high > length ? length - places.high : 0;
}

bool isPartOf(const BoardItem& item, std::span<const UUID> ids) {
    return std::ranges::any_of(ids, [&](const UUID& id) { return item.id == id || Edits::isDrawnOn(item, id); });
}

} // namespace

GroupFrame frameOf(const Board& board, std::span<const UUID> ids) {
    const auto around = rectAround(board, ids);
    if (!around) return {};
    const bool canResize = std::ranges::any_of(ids, [&](const UUID& id) {
        const auto* const item = board.find(id);
        return item != nullptr && BoardSpec::canResize(item->kind());
    });
    return {.middle = around->centre(), .size = around->size, .canResize = canResize};
}

GroupDraft GroupDraft::of(const Board& shown, std::span<const UUID> ids) {
    GroupDraft draft;
    for (const auto& id : ids) {
        const auto* const item = shown.find(id);
        if (item == nullptr) continue;
        draft.members_.push_back({.id = id,
                                  .center = item->center,
                                  .tilt = item->rotationDegrees,
                                  .scale = item->scale,
                                  .canResize = BoardSpec::canResize(item->kind())});
    }
    draft.start_ = frameOf(shown, ids);
    draft.follow(shown);
    return draft;
}

std::vector<UUID> GroupDraft::ids() const {
    std::vector<UUID> ids;
    ids.reserve(members_.size());
    for (const auto& member : members_) ids.push_back(member.id);
    return ids;
}

void GroupDraft::follow(const Board& shown) {
    std::erase_if(members_, [&](const Member& member) {
        const auto* const item = shown.find(member.id);
        return item == nullptr || Edits::isLocked(shown, *item);
    });
    const auto held = ids();
    shown_.items.clear();
    for (const auto& item : shown.items) {
        if (isPartOf(item, held)) shown_.items.push_back(item);
    }
}

GroupFrame GroupDraft::frame() const {
    auto frame = start_;
    frame.middle = start_.middle + by_ + shift();
    frame.size = start_.size * growth_;
    frame.tilt = turn_;
    frame.scale = growth_;
    return frame;
}

// Before all of them are brought back onto the canvas.
Point GroupDraft::placeOf(const Member& member) const {
    const double angle = turn_ * std::numbers::pi / 180;
    const Point arm = (member.center - start_.middle) * growth_;
    return start_.middle + by_ +
           Point{arm.x * std::cos(angle) - arm.y * std::sin(angle), arm.x * std::sin(angle) + arm.y * std::cos(angle)};
}

Point GroupDraft::shift() const {
    Span across;
    Span down;
    for (const auto& member : members_) {
        const auto place = placeOf(member);
        across.include(place.x);
        down.include(place.y);
    }
    if (members_.empty()) return {};
    return {shiftOnto(across, BoardSpec::canvasSize.width), shiftOnto(down, BoardSpec::canvasSize.height)};
}

GroupDraft::Done GroupDraft::moveTo(Point middle) {
    if (!isFinite(middle)) return std::unexpected(EditFault::notFinite);
    by_ = middle - start_.middle;
    return {};
}

GroupDraft::Done GroupDraft::turnTo(double degrees) {
    if (!std::isfinite(degrees)) return std::unexpected(EditFault::notFinite);
    double low = -2 * BoardSpec::maxRotationDegrees;
    double high = 2 * BoardSpec::maxRotationDegrees;
    for (const auto& member : members_) {
        const double tilt = BoardSpec::clampRotation(member.tilt);
        low = std::max(low, -BoardSpec::maxRotationDegrees - tilt);
        high = std::min(high, BoardSpec::maxRotationDegrees - tilt);
    }
    const double snapped = std::round(degrees / BoardSpec::rotationSnapDegrees) * BoardSpec::rotationSnapDegrees;
    // Adding zero turns a negative zero into zero.
    turn_ = std::clamp(snapped, std::min(low, 0.0), std::max(high, 0.0)) + 0.0;
    return {};
}

GroupDraft::Done GroupDraft::resizeTo(double scale) {
    if (!std::isfinite(scale)) return std::unexpected(EditFault::notFinite);
    if (!start_.canResize) return std::unexpected(EditFault::cannotResize);
    double low = BoardSpec::minItemScale / BoardSpec::maxItemScale;
    double high = BoardSpec::maxItemScale / BoardSpec::minItemScale;
    for (const auto& member : members_) {
        if (!member.canResize) continue;
        const double own = BoardSpec::clampScale(member.scale);
        low = std::max(low, BoardSpec::minItemScale / own);
        high = std::min(high, BoardSpec::maxItemScale / own);
    }
    const double settled = std::abs(scale - 1) <= BoardSpec::itemScaleSnap ? 1 : scale;
    growth_ = std::clamp(settled, std::min(low, 1.0), std::max(high, 1.0));
    return {};
}

Board GroupDraft::over(Board board, Hand hand) const {
    if (!isMoved()) return board;
    const Point shifted = shift();
    for (const auto& member : members_) {
        const auto* const found = board.find(member.id);
        if (found == nullptr) continue;
        const BoardItem before = *found;
        BoardItem item = before;
        item.center = Edits::heldOnCanvas(placeOf(member) + shifted);
        if (turn_ != 0) item.rotationDegrees = BoardSpec::clampRotation(member.tilt + turn_);
        if (growth_ != 1 && member.canResize) item.scale = BoardSpec::clampScale(member.scale * growth_);
        Edits::overlay(board, Edits::carried(board, before, std::move(item), hand));
    }
    return board;
}

std::vector<BoardItem> GroupDraft::items() const {
    if (shown_.items.empty()) return {};
    const auto& first = shown_.items.front();
    return over(shown_, {.author = first.author, .now = first.updatedAt}).items;
}

Edits::Result GroupDraft::placing(const Board& board, Hand hand) const {
    auto after = over(board, hand);
    const auto held = ids();
    if (!Edits::isStacked(after, held, StackEnd::front)) {
        const auto raised = Edits::stack(after, held, StackEnd::front, hand);
        if (!raised) return raised;
        Edits::overlay(after, *raised);
    }
    return Edits::changes(board, after, hand);
}

} // namespace lumaro
