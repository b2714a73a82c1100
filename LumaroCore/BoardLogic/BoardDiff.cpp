// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/BoardDiff.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lumaro {
namespace {

bool isElsewhere(const BoardItem& before, const BoardItem& after) {
    return before.center != after.center || before.rotationDegrees != after.rotationDegrees ||
           before.scale != after.scale || before.z != after.z;
}

void compare(const BoardItem& before, const BoardItem& after, std::size_t row, BoardDiff& diff) {
    if (before == after) return;
    const bool moved = isElsewhere(before, after);
    const bool changed = before.payload != after.payload;
    if (moved) diff.moved.push_back(row);
    if (changed) diff.changed.push_back(row);
    if (!moved && !changed) diff.restamped.push_back(row);
}

// For every row after, the row before of the same item, if any. Rows mostly stay, so the search starts where it left
// off.
std::vector<std::optional<std::size_t>> matchRows(const std::vector<BoardItem>& before,
                                                  const std::vector<BoardItem>& after) {
    std::vector<std::optional<std::size_t>> matches(after.size());
    std::vector<bool> taken(before.size());
    std::size_t next = 0;
    for (std::size_t row = 0; row < after.size(); ++row) {
        const auto isMatch = [&](std::size_t i) { return !taken[i] && before[i].id == after[row].id; };
        std::size_t found = next;
        if (next >= before.size() || !isMatch(next)) {
            found = 0;
            while (found < before.size() && !isMatch(found)) ++found;
        }
        if (found == before.size()) continue;
        matches[row] = found;
        taken[found] = true;
        next = found + 1;
    }
    return matches;
}

// The moves that bring the kept rows from their old order into their new one, one row at a time.
std::vector<BoardDiff::RowMove> rowMoves(std::vector<std::size_t> wanted) {
    std::vector<std::size_t> current = wanted;
    std::ranges::sort(current);
    std::vector<BoardDiff::RowMove> moves;
    for (std::size_t to = 0; to < wanted.size(); ++to) {
        if (current[to] == wanted[to]) continue;
        const auto from = std::ranges::find(current, wanted[to]);
        moves.push_back({.from = static_cast<std::size_t>(from - current.begin()), .to = to});
        std::rotate(current.begin() + static_cast<std::ptrdiff_t>(to), from, from + 1);
    }
    return moves;
}

} // namespace

bool BoardDiff::isEmpty() const {
    return *this == BoardDiff{};
}

BoardDiff BoardLogic::diff(const Board& before, const Board& after) {
    BoardDiff diff;
    diff.background = before.background != after.background;
    diff.thread = before.threadTiedAt != after.threadTiedAt;

    const auto matches = matchRows(before.items, after.items);
    std::vector<bool> stays(before.items.size());
    std::vector<std::size_t> kept;
    for (std::size_t row = 0; row < after.items.size(); ++row) {
        if (!matches[row]) {
            diff.added.push_back(row);
            continue;
        }
        stays[*matches[row]] = true;
        kept.push_back(*matches[row]);
        compare(before.items[*matches[row]], after.items[row], row, diff);
    }
    for (std::size_t row = before.items.size(); row-- > 0;) {
        if (!stays[row]) diff.removed.push_back(row);
    }
    if (!std::ranges::is_sorted(kept)) diff.reordered = rowMoves(std::move(kept));
    return diff;
}

} // namespace lumaro
