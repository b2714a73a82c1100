// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Sqlite/Journal.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace lumaro {

/// The tables of boards, couple by couple: items, tombstones, and the batches that were taken.
class BoardTables {
public:
    /// The database outlives the tables.
    explicit BoardTables(Database& database) : database_(database) {}

    /// Does what the steps do, as if they were one; `lastPlace` is that of the newest step of all couples.
    [[nodiscard]] StoreResult<void> checkpoint(std::int64_t couple, std::span<const JournalStep> steps,
                                               std::int64_t lastPlace);
    [[nodiscard]] StoreResult<bool> holdsBatch(std::int64_t couple, const UUID& batchId);

    /// Everything of a room but its members; how many of its items cannot be read, and were left off.
    [[nodiscard]] StoreResult<std::size_t> load(std::int64_t couple, RoomRecord& room);

private:
    StoreResult<void> takeDown(std::int64_t couple, const UUID& item, Instant at);
    StoreResult<void> putUp(std::int64_t couple, const JournalEffect& effect, Instant at);
    StoreResult<void> setTombstone(std::int64_t couple, const JournalEffect& effect, Instant at);
    StoreResult<void> nameNoLonger(std::int64_t couple, const UUID& media, Instant at);
    StoreResult<void> fileBatches(std::int64_t couple, std::span<const JournalStep> steps);

    StoreResult<std::size_t> loadItems(std::int64_t couple, Board& board);
    StoreResult<void> loadTombstones(std::int64_t couple, Board& board);
    StoreResult<void> loadRecentBatches(std::int64_t couple, RoomRecord& room);

    Database& database_;
};

} // namespace lumaro
