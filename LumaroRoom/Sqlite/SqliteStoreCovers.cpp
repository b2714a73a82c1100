// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/SqliteStore.h"

#include <algorithm>
#include <utility>

namespace lumaro {

StoreResult<CoverOutcome> SqliteStore::putCover(std::string_view coupleId, const UUID& id, std::string_view bytes,
                                                Instant at, std::size_t limit) {
    const auto couple = existing(coupleId);
    if (!couple) return std::unexpected(couple.error());
    const auto found =
        database_.value<bool>("SELECT bytes = ?3 FROM covers WHERE couple = ?1 AND id = ?2", *couple, id, Blob{bytes});
    if (!found) return std::unexpected(found.error());
    const bool isThere = found->has_value();
    if (isThere && !**found) return CoverOutcome::otherBytes;
    auto done = isThere ? useCover(*couple, id, at) : makeRoomForCover(*couple, bytes.size(), limit);
    if (done && !isThere) {
        done = database_.run("INSERT INTO covers(couple, id, size, used_at, bytes) VALUES(?1, ?2, ?3, ?4, ?5)", *couple,
                             id, static_cast<std::int64_t>(bytes.size()), at, Blob{bytes});
    }
    if (!done) return std::unexpected(std::move(done.error()));
    return isThere ? CoverOutcome::isThere : CoverOutcome::stored;
}

StoreResult<std::optional<std::string>> SqliteStore::readCover(std::string_view coupleId, const UUID& id, Instant at) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    std::optional<std::string> bytes;
    Instant usedAt;
    {
        auto rows = database_.query("SELECT used_at, bytes FROM covers WHERE couple = ?1 AND id = ?2", *couple, id);
        if (rows.next()) rows >> usedAt >> bytes.emplace();
        if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    }
    if (!bytes || usedAt >= at - coverUseTime) return bytes;
    if (auto used = useCover(**couple, id, at); !used) return std::unexpected(std::move(used.error()));
    return bytes;
}

StoreResult<void> SqliteStore::useCover(std::int64_t couple, const UUID& id, Instant at) {
    return database_.run("UPDATE covers SET used_at = max(used_at, ?3) WHERE couple = ?1 AND id = ?2", couple, id, at);
}

StoreResult<void> SqliteStore::makeRoomForCover(std::int64_t couple, std::size_t bytes, std::size_t limit) {
    const auto leastWeight = static_cast<std::int64_t>(minCoverWeight);
    const auto left = static_cast<std::int64_t>(limit) - std::max(static_cast<std::int64_t>(bytes), leastWeight);
    return database_.run(
        "DELETE FROM covers WHERE num IN (SELECT num FROM (SELECT num, sum(max(size, ?3)) OVER (ORDER BY used_at DESC "
        "ROWS UNBOUNDED PRECEDING) AS weight FROM covers WHERE couple = ?1) WHERE weight > ?2)",
        couple, left, leastWeight);
}

} // namespace lumaro
