// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/SqliteStore.h"

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Sqlite/DatabaseFiles.h"
#include "LumaroRoom/Sqlite/Schema.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace lumaro {
namespace {

// FULL: a commit returns when the log is on the disk. The log is folded into the file every 16 MiB, so that a page that
// many commits change is written there once; it is then written over from its beginning, not cut.
constexpr const char* settings = R"(
PRAGMA page_size = 4096;
PRAGMA journal_mode = WAL;
PRAGMA synchronous = FULL;
PRAGMA cache_size = -65536;
PRAGMA wal_autocheckpoint = 4096;
PRAGMA temp_store = MEMORY;
)";

constexpr std::int64_t pageBytes = 4096;
constexpr std::size_t maxCouplesKnown = 100'000;

// A couple's steps are checkpointed when there are so many of them: the more, the more of them concern one item or one
// page.
constexpr std::size_t stepsPerFiling = 256;
// Of the couples in a transaction, one for so many may be checkpointed with it.
constexpr std::size_t couplesPerPortion = 32;
// When the steps in memory weigh more, those that have waited longest are checkpointed however few of a couple there
// are.
constexpr std::size_t maxJournalBytes = std::size_t{32} << 20U;
constexpr auto every = std::numeric_limits<std::size_t>::max();

StoreResult<JournalEffect> puttingUp(const BoardItem& item) {
    JournalEffect effect{JournalEffect::Kind::putUp, item.id, mediumOf(item.payload), std::nullopt, {}};
    if (const auto encoded = Wire::encodeTo(effect.json, item); !encoded) {
        return std::unexpected(StoreError{"an item has no JSON: \"" + encoded.error().key + "\""});
    }
    return effect;
}

StoreResult<JournalStep> stepOf(const Commit& commit) {
    using enum JournalEffect::Kind;
    const auto& change = commit.change;
    JournalStep step{commit.batchId, commit.at, change.background, change.threadTiedAt, change.updatedAt, {}};
    auto& effects = step.effects;
    effects.reserve(change.removed.size() + change.buried.size() + change.unburied.size() + change.upserted.size());
    for (const auto& id : change.removed) effects.push_back({takeDown, id, std::nullopt, std::nullopt, {}});
    for (const auto& [id, deletedAt] : change.buried) effects.push_back({bury, id, std::nullopt, deletedAt, {}});
    for (const auto& id : change.unburied) effects.push_back({unbury, id, std::nullopt, std::nullopt, {}});
    for (const auto& item : change.upserted) {
        auto effect = puttingUp(item);
        if (!effect) return std::unexpected(std::move(effect.error()));
        effects.push_back(std::move(*effect));
    }
    return step;
}

} // namespace

SqliteStore::SqliteStore(FolderLock lock, Database database, Log& log)
    : lock_(std::move(lock)), database_(std::move(database)), log_(log) {
}

StoreResult<std::unique_ptr<SqliteStore>> SqliteStore::open(const std::string& path, Log& log, Limits limits) {
    auto lock = lockDatabase(path);
    if (!lock) return std::unexpected(std::move(lock.error()));
    if (auto made = createPrivately(path); !made) return std::unexpected(std::move(made.error()));
    auto database = Database::open(path, Database::Access::write);
    if (!database) return std::unexpected(std::move(database.error()));
    // Before anything is written to it: another program's database stays as it is.
    const auto found = Schema::check(*database);
    if (!found) return std::unexpected(StoreError{path + ": " + found.error().message, found.error().fault});
    auto done = database->execute(settings);
    if (done && limits.maxBytes) {
        done = database->execute("PRAGMA max_page_count = " + std::to_string(*limits.maxBytes / pageBytes));
    }
    if (done) done = Schema::migrate(*database);
    if (!done) return std::unexpected(StoreError{path + ": " + done.error().message, done.error().fault});
    std::unique_ptr<SqliteStore> store{new SqliteStore{std::move(*lock), std::move(*database), log}};
    if (auto recovered = store->recover(); !recovered) {
        return std::unexpected(StoreError{path + ": " + recovered.error().message, recovered.error().fault});
    }
    return store;
}

SqliteStore::~SqliteStore() {
    // What stays in the journal is recovered when the store is opened again.
    if (!isRecovered_ || database_.isInTransaction()) return;
    if (beginTransaction() && fileEach(journal_.longestWaiting(every))) static_cast<void>(database_.run("COMMIT"));
}

StoreResult<void> SqliteStore::recover() {
    auto done = beginTransaction();
    if (done) done = journal_.recover();
    if (done) done = fileEach(journal_.longestWaiting(every));
    if (done) done = commitTransaction();
    isRecovered_ = done.has_value();
    return done;
}

// A transaction that has read alone costs no synchronisation when it is committed.
StoreResult<void> SqliteStore::beginTransaction() {
    return database_.run("BEGIN");
}

StoreResult<void> SqliteStore::commitTransaction() {
    auto done = fileWhatIsDue();
    if (done) done = database_.run("COMMIT");
    if (!done) {
        rollBack();
        return done;
    }
    journal_.committed();
    return done;
}

void SqliteStore::rollBack() {
    // Couples that were made in the transaction are void, and versions may be. Some faults have ended it already.
    known_.clear();
    journal_.rolledBack();
    if (database_.isInTransaction()) static_cast<void>(database_.run("ROLLBACK"));
}

StoreResult<SqliteStore::Known*> SqliteStore::known(std::string_view coupleId) {
    if (const auto found = known_.find(coupleId); found != known_.end()) return &found->second;
    auto rows = database_.query("SELECT num, version FROM couples WHERE id = ?1", coupleId);
    Known couple;
    const bool isThere = rows.next();
    if (isThere) rows >> couple.number >> couple.version;
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    if (!isThere) return nullptr;
    couple.version += static_cast<std::int64_t>(journal_.stepsOf(couple.number).size());
    if (known_.size() >= maxCouplesKnown) known_.clear();
    return &known_.emplace(coupleId, couple).first->second;
}

StoreResult<std::optional<std::int64_t>> SqliteStore::numberOf(std::string_view coupleId) {
    const auto couple = known(coupleId);
    if (!couple) return std::unexpected(couple.error());
    return *couple == nullptr ? std::nullopt : std::optional{(*couple)->number};
}

StoreResult<std::int64_t> SqliteStore::existing(std::string_view coupleId) {
    const auto couple = known(coupleId);
    if (!couple) return std::unexpected(couple.error());
    if (*couple == nullptr) return std::unexpected(StoreError{"no couple " + std::string{coupleId}});
    return (*couple)->number;
}

StoreResult<std::optional<RoomRecord>> SqliteStore::loadRoom(std::string_view coupleId) {
    const auto couple = numberOf(coupleId);
    if (!couple) return std::unexpected(couple.error());
    if (!*couple) return std::nullopt;
    auto members = this->members(coupleId);
    if (!members) return std::unexpected(std::move(members.error()));
    RoomRecord room;
    room.members = std::move(*members);
    if (auto done = checkpoint(**couple); !done) return std::unexpected(std::move(done.error()));
    const auto unreadable = boards_.load(**couple, room);
    if (!unreadable) return std::unexpected(unreadable.error());
    if (*unreadable > 0) {
        log_.write(LogLevel::error, "store",
                   std::to_string(*unreadable) + " items of a board cannot be read: they are kept, and left off it");
    }
    return room;
}

StoreResult<CommitOutcome> SqliteStore::commit(const Commit& commit) {
    const auto found = known(commit.coupleId);
    if (!found) return std::unexpected(found.error());
    if (*found == nullptr) return CommitOutcome::versionConflict;
    auto& [couple, version] = **found;
    if (commit.batchId) {
        if (journal_.holdsBatch(couple, *commit.batchId)) return CommitOutcome::duplicateBatch;
        const auto isFiled = boards_.holdsBatch(couple, *commit.batchId);
        if (!isFiled) return std::unexpected(isFiled.error());
        if (*isFiled) return CommitOutcome::duplicateBatch;
    }
    if (commit.expectedVersion != version) return CommitOutcome::versionConflict;
    auto step = stepOf(commit);
    if (!step) return std::unexpected(std::move(step.error()));
    if (auto done = journal_.append(couple, std::move(*step)); !done) return std::unexpected(std::move(done.error()));
    ++version;
    return CommitOutcome::stored;
}

StoreResult<void> SqliteStore::checkpoint(std::int64_t couple) {
    const auto steps = journal_.stepsOf(couple);
    if (steps.empty()) return {};
    if (!database_.isInTransaction()) return std::unexpected(StoreError{"the store is used outside a transaction"});
    auto done = boards_.checkpoint(couple, steps, journal_.lastPlace());
    if (done) journal_.checkpointed(couple);
    return done;
}

// Little in every transaction, so that none takes long.
StoreResult<void> SqliteStore::fileWhatIsDue() {
    const auto& touched = journal_.touched();
    auto portions = 1 + touched.size() / couplesPerPortion;
    StoreResult<void> done;
    for (std::size_t i = 0; done && portions > 0 && i < touched.size(); ++i) {
        if (journal_.stepsOf(touched[i]).size() < stepsPerFiling) continue;
        done = checkpoint(touched[i]);
        --portions;
    }
    if (done && journal_.bytes() > maxJournalBytes) done = fileEach(journal_.longestWaiting(touched.size()));
    if (done && !touched.empty()) done = journal_.trim();
    return done;
}

StoreResult<void> SqliteStore::fileEach(const std::vector<std::int64_t>& couples) {
    StoreResult<void> done;
    for (const auto couple : couples) {
        if (done) done = checkpoint(couple);
    }
    return done;
}

} // namespace lumaro
