// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/Edits.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace lumaro {

/// Why an act is not taken back.
enum class UndoFault : std::uint8_t {
    nothingToUndo,
    nothingToRedo,
    changedSince, ///< something that the act touched is no longer as the act left it
    expired,      ///< a note would come back whose time is over
};

/// One item before and after an act; absent where it is not on the board.
struct ItemChange {
    UUID id;
    std::optional<BoardItem> before;
    std::optional<BoardItem> after;
    std::optional<Instant> buriedAt; ///< its tombstone's instant, when one of the two is absent and it is known

    bool operator==(const ItemChange&) const = default;
};

struct BackgroundChange {
    BackgroundID before = BackgroundID::butter;
    BackgroundID after = BackgroundID::butter;

    bool operator==(const BackgroundChange&) const = default;
};

/// What one act of a person changed, and so what taking it back restores.
struct UndoStep {
    std::vector<UUID> batches; ///< that brought it about: one, or those of a text typed in one go
    std::vector<ItemChange> items;
    std::optional<BackgroundChange> background;
    std::optional<std::uint64_t> session; ///< the text editing that it belongs to

    bool isEmpty() const { return items.empty() && !background; }
    bool operator==(const UndoStep&) const = default;
};

/// Whether two are the same version of an item. A board never holds two that differ under one author and instant.
bool isSameVersion(const BoardItem& one, const BoardItem& other);

/// What an act changed, by the boards shown before and after it.
UndoStep stepBetween(const Board& before, const Board& after);

/// The ops that bring back what was there before the step. Refused as a whole unless everything the step touched is on
/// the board in the very version that the step left: whoever wrote a later one, it is not this step's to overwrite.
/// Also refused when a doodle drawn on an item since would be taken down or left behind, or a doodle would come back on
/// an item that is gone. A background has no author: it is the step's while it has the colour that the step gave it.
std::expected<std::vector<Op>, UndoFault> takingBack(const UndoStep& step, const Board& board, Hand hand);

} // namespace lumaro
