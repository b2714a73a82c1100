// SPDX-License-Identifier: Apache-2.0
// Media, and what is forgotten in time.
#include "LumaroRoom/Sqlite/SqliteStore.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

// Few enough that edits which wait behind a portion do not notice. Media weigh up to 2 MiB each, covers 128 KiB.
constexpr std::int64_t portion = 256;
constexpr std::int64_t mediaPortion = 16;
constexpr std::int64_t filingPortion = 16;
constexpr std::int64_t couplesPortion = 64;
// Steps of quiet couples stay in the journal, and in memory, so long.
constexpr std::chrono::hours journalTime{1};

// Whether a whole portion was forgotten every time, so that there may be more.
class Sweep {
public:
    void took(const StoreResult<std::int64_t>& count, std::int64_t limit) {
        if (!count && result_) result_ = std::unexpected(count.error());
        if (count && result_ && *count >= limit) result_ = true;
    }
    const StoreResult<bool>& result() const { return result_; }

private:
    StoreResult<bool> result_{false};
};

} // namespace

StoreResult<std::optional<Store::MediaRecord>> SqliteStore::media(std::string_view coupleId, const UUID& id) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    auto rows =
        database_.query("SELECT size, digest, content_type FROM media WHERE couple = ?1 AND id = ?2", *couple, id);
    std::optional<MediaRecord> found;
    std::int64_t size = 0;
    if (rows.next()) {
        rows >> size >> found.emplace().digest >> found->contentType;
        found->bytes = static_cast<std::size_t>(size);
    }
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    return found;
}

StoreResult<std::size_t> SqliteStore::mediaBytes(std::string_view coupleId) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    const auto sum =
        database_.value<std::int64_t>("SELECT coalesce(sum(size), 0) FROM media WHERE couple = ?1", *couple);
    if (!sum) return std::unexpected(sum.error());
    return static_cast<std::size_t>(sum->value_or(0));
}

StoreResult<void> SqliteStore::putMedia(std::string_view coupleId, const UUID& id, const MediaRecord& record,
                                        std::string_view bytes, Instant at) {
    const auto couple = existing(coupleId);
    if (!couple) return std::unexpected(couple.error());
    // Whether an item names it is asked of the items' table.
    if (auto done = checkpoint(*couple); !done) return done;
    return database_.run(
        "INSERT OR IGNORE INTO media(couple, id, size, digest, content_type, unnamed_since, bytes) VALUES(?1, ?2, ?3, "
        "?4, ?5, CASE WHEN EXISTS (SELECT 1 FROM items WHERE couple = ?1 AND media = ?2) THEN NULL ELSE ?6 END, ?7)",
        *couple, id, static_cast<std::int64_t>(bytes.size()), record.digest, record.contentType, at, Blob{bytes});
}

StoreResult<std::optional<std::string>> SqliteStore::readMedia(std::string_view coupleId, const UUID& id) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    return database_.value<std::string>("SELECT bytes FROM media WHERE couple = ?1 AND id = ?2", *couple, id);
}

StoreResult<bool> SqliteStore::sweep(Instant now) {
    Sweep sweep;
    sweep.took(fileWhatIsOld(now), filingPortion);
    sweep.took(sweepBatches(now - batchLifetime), couplesPortion);
    sweep.took(database_.change("DELETE FROM tombstones WHERE (couple, id) IN (SELECT couple, id FROM tombstones WHERE "
                                "stored_at <= ?1 LIMIT ?2)",
                                now - batchLifetime, portion),
               portion);
    sweep.took(
        database_.change("DELETE FROM wrong_codes WHERE num IN (SELECT num FROM wrong_codes WHERE at <= ?1 LIMIT ?2)",
                         now - codeMemory, portion),
        portion);
    sweep.took(
        database_.change("DELETE FROM codes WHERE digits IN (SELECT digits FROM codes WHERE expires_at <= ?1 LIMIT ?2)",
                         now - codeMemory, portion),
        portion);
    sweep.took(database_.change("DELETE FROM links WHERE id IN (SELECT id FROM links WHERE expires_at <= ?1 LIMIT ?2)",
                                now - graceTime, portion),
               portion);
    sweep.took(
        database_.change("DELETE FROM media WHERE num IN (SELECT num FROM media WHERE unnamed_since <= ?1 LIMIT ?2)",
                         now - graceTime, mediaPortion),
        mediaPortion);
    sweep.took(database_.change("DELETE FROM covers WHERE num IN (SELECT num FROM covers WHERE used_at <= ?1 LIMIT ?2)",
                                now - graceTime, portion),
               portion);
    if (!sweep.result() || *sweep.result()) return sweep.result();
    return sweepCouples(now);
}

// How many couples were checkpointed.
StoreResult<std::int64_t> SqliteStore::fileWhatIsOld(Instant now) {
    auto couples = journal_.longestWaiting(filingPortion);
    std::ranges::copy(journal_.touched(), std::back_inserter(couples));
    std::int64_t count = 0;
    for (const auto couple : couples) {
        const auto steps = journal_.stepsOf(couple);
        if (count == filingPortion || steps.empty() || steps.front().at > now - journalTime) continue;
        if (auto done = checkpoint(couple); !done) return std::unexpected(std::move(done.error()));
        ++count;
    }
    return count;
}

// Goes round the couples; how many of a portion it came to. A couple's batches lie in the order in which they were
// taken.
StoreResult<std::int64_t> SqliteStore::sweepBatches(Instant takenBefore) {
    std::vector<std::int64_t> couples;
    auto rows =
        database_.query("SELECT num FROM couples WHERE num > ?1 ORDER BY num LIMIT ?2", lastSwept_, couplesPortion);
    while (rows.next()) rows >> couples.emplace_back();
    auto done = rows.ended();
    for (const auto couple : couples) {
        if (!done) break;
        const auto oldest =
            database_.value<Instant>("SELECT at FROM batches WHERE couple = ?1 ORDER BY place LIMIT 1", couple);
        if (!oldest) return std::unexpected(oldest.error());
        if (*oldest && **oldest <= takenBefore) {
            done = database_.run("DELETE FROM batches WHERE couple = ?1 AND place IN (SELECT place FROM (SELECT place, "
                                 "at FROM batches WHERE couple = ?1 ORDER BY place LIMIT ?3) WHERE at <= ?2)",
                                 couple, takenBefore, portion);
            if (done) return couplesPortion;
        }
        lastSwept_ = couple;
    }
    if (!done) return std::unexpected(std::move(done.error()));
    const auto count = static_cast<std::int64_t>(couples.size());
    if (count < couplesPortion) lastSwept_ = 0;
    return count;
}

// One couple at a time, its heaviest parts first and in portions; the couple itself takes the rest with it.
StoreResult<bool> SqliteStore::sweepCouples(Instant now) {
    std::int64_t couple = 0;
    std::string id;
    {
        auto rows = database_.query("SELECT num, id FROM couples WHERE empty_since <= ?1 LIMIT 1", now - graceTime);
        const bool isThere = rows.next();
        if (isThere) rows >> couple >> id;
        if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
        if (!isThere) return false;
    }
    if (auto done = checkpoint(couple); !done) return std::unexpected(std::move(done.error()));
    Sweep sweep;
    sweep.took(database_.change("DELETE FROM media WHERE num IN (SELECT num FROM media WHERE couple = ?1 LIMIT ?2)",
                                couple, mediaPortion),
               mediaPortion);
    sweep.took(database_.change("DELETE FROM covers WHERE num IN (SELECT num FROM covers WHERE couple = ?1 LIMIT ?2)",
                                couple, portion),
               portion);
    sweep.took(
        database_.change(
            "DELETE FROM batches WHERE couple = ?1 AND place IN (SELECT place FROM batches WHERE couple = ?1 LIMIT ?2)",
            couple, portion),
        portion);
    sweep.took(
        database_.change(
            "DELETE FROM tombstones WHERE couple = ?1 AND id IN (SELECT id FROM tombstones WHERE couple = ?1 LIMIT ?2)",
            couple, portion),
        portion);
    if (!sweep.result() || *sweep.result()) return sweep.result();
    known_.erase(id);
    if (auto gone = database_.run("DELETE FROM couples WHERE num = ?1", couple); !gone) {
        return std::unexpected(std::move(gone.error()));
    }
    return true;
}

} // namespace lumaro
