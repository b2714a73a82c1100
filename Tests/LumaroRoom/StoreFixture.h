// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Room/BoardChange.h"
#include "LumaroRoom/Sqlite/SqliteStore.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

inline CoupleRecord coupleNamed(const std::string& id) {
    return {.coupleId = id, .createdAt = samples::noon, .emptySince = std::nullopt};
}

inline DeviceRecord device(const std::string& id, PartnerID slot) {
    TokenHash token{};
    token.fill(static_cast<std::uint8_t>(id.size()));
    return {.deviceId = id, .slot = slot, .token = token};
}

inline BoardItem note(std::uint64_t number, const std::string& text) {
    BoardItem item;
    item.id = samples::numberedId(number);
    item.createdAt = item.updatedAt = samples::noon;
    item.payload = samples::plainNote(text);
    return item;
}

inline BoardItem photo(std::uint64_t number, std::uint64_t media) {
    auto item = note(number, "");
    item.payload = PhotoPayload{samples::numberedId(media), "", std::nullopt, std::nullopt};
    return item;
}

/// Puts items up as a batch with this number.
inline Commit putUp(const std::string& couple, std::int64_t version, std::uint64_t batch,
                    std::vector<BoardItem> items) {
    Commit commit{couple, version, samples::numberedId(batch), samples::noon, {}};
    commit.change.upserted = std::move(items);
    commit.change.updatedAt = samples::noon;
    return commit;
}

/// A room as its server keeps it, beside the one in the store: batches of ops, one commit each.
struct ModelRoom {
    std::string coupleId;
    Board board;
    std::int64_t version = 0;
    std::uint64_t batches = 0;

    explicit ModelRoom(const std::string& id) : coupleId(id) { board.updatedAt = samples::noon; }

    /// The next batch, of any ops.
    Commit next(samples::Random& random) {
        std::vector<Op> ops;
        for (int i = samples::pick(random, 1, 4); i > 0; --i) ops.push_back(samples::anyOp(random, 12));
        auto change = applyBatch(ops, board, samples::noon).change;
        return {coupleId, version++, samples::numberedId(++batches), samples::noon, std::move(change)};
    }
    void expectStoredIn(Store& store) const {
        const auto room = store.loadRoom(coupleId).value().value();
        EXPECT_EQ(room.board, board);
        EXPECT_EQ(room.version, version);
        ASSERT_EQ(room.recentBatches.size(), std::min<std::uint64_t>(batches, recentBatchCount));
        EXPECT_EQ(room.recentBatches.empty() ? UUID{} : room.recentBatches.back(), samples::numberedId(batches));
    }
};

} // namespace lumaro
