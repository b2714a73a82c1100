// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/BoardTables.h"

#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

// What steps come to: an item that was moved twenty times is written once.
class NetEffect {
public:
    struct Dated {
        const JournalEffect* effect = nullptr;
        Instant at;
    };

    explicit NetEffect(std::span<const JournalStep> steps) {
        for (const auto& step : steps) {
            for (const auto& effect : step.effects) add({&effect, step.at});
        }
    }

    std::map<UUID, Instant> takenDown; ///< before anything is put up
    std::map<UUID, Dated> tombstones;  ///< what was done last to each
    std::vector<Dated> putUp;          ///< in the order of the board; null where it was taken down again

private:
    void add(const Dated& dated) {
        using enum JournalEffect::Kind;
        const auto& item = dated.effect->item;
        switch (dated.effect->kind) {
        case takeDown: take(item, dated.at); break;
        case bury:
            // An item that could not be read is not on the board, and so not among those that are taken down.
            take(item, dated.at);
            tombstones[item] = dated;
            break;
        case unbury: tombstones[item] = dated; break;
        case JournalEffect::Kind::putUp: put(dated); break;
        }
    }

    void take(const UUID& item, Instant at) {
        takenDown[item] = at;
        if (const auto place = places_.find(item); place != places_.end()) {
            putUp[place->second].effect = nullptr;
            places_.erase(place);
        }
    }

    void put(const Dated& dated) {
        const auto [place, isNew] = places_.try_emplace(dated.effect->item, putUp.size());
        if (isNew) {
            putUp.push_back(dated);
        } else {
            putUp[place->second] = dated;
        }
    }

    std::map<UUID, std::size_t> places_; // in putUp
};

} // namespace

StoreResult<void> BoardTables::checkpoint(std::int64_t couple, std::span<const JournalStep> steps,
                                          std::int64_t lastPlace) {
    const auto& last = steps.back();
    const NetEffect net{steps};
    StoreResult<void> done;
    for (const auto& [item, at] : net.takenDown) {
        if (done) done = takeDown(couple, item, at);
    }
    for (const auto& [item, dated] : net.tombstones) {
        if (done) done = setTombstone(couple, *dated.effect, dated.at);
    }
    for (const auto& [effect, at] : net.putUp) {
        if (done && effect != nullptr) done = putUp(couple, *effect, at);
    }
    if (done) done = fileBatches(couple, steps);
    if (!done) return done;
    return database_.run("UPDATE couples SET version = version + ?2, background = ?3, tied_at = ?4, updated_at = ?5, "
                         "filed = ?6 WHERE num = ?1",
                         couple, static_cast<std::int64_t>(steps.size()), last.background, last.threadTiedAt,
                         last.updatedAt, lastPlace);
}

StoreResult<void> BoardTables::fileBatches(std::int64_t couple, std::span<const JournalStep> steps) {
    StoreResult<void> done;
    for (const auto& step : steps) {
        if (!done || !step.batchId) continue;
        done = database_.run("INSERT INTO batches(couple, place, id, at) VALUES(?1, ?2, ?3, ?4)", couple, step.place,
                             *step.batchId, step.at);
    }
    return done;
}

StoreResult<bool> BoardTables::holdsBatch(std::int64_t couple, const UUID& batchId) {
    const auto found =
        database_.value<std::int64_t>("SELECT 1 FROM batches WHERE couple = ?1 AND id = ?2", couple, batchId);
    if (!found) return std::unexpected(found.error());
    return found->has_value();
}

StoreResult<void> BoardTables::takeDown(std::int64_t couple, const UUID& item, Instant at) {
    const auto media = database_.value<std::optional<UUID>>(
        "DELETE FROM items WHERE couple = ?1 AND id = ?2 RETURNING media", couple, item);
    if (!media) return std::unexpected(media.error());
    if (!*media || !**media) return {};
    return nameNoLonger(couple, ***media, at);
}

StoreResult<void> BoardTables::setTombstone(std::int64_t couple, const JournalEffect& effect, Instant at) {
    if (effect.kind == JournalEffect::Kind::unbury) {
        return database_.run("DELETE FROM tombstones WHERE couple = ?1 AND id = ?2", couple, effect.item);
    }
    return database_.run("INSERT OR REPLACE INTO tombstones(couple, id, deleted_at, stored_at) VALUES(?1, ?2, ?3, ?4)",
                         couple, effect.item, effect.deletedAt, at);
}

StoreResult<void> BoardTables::putUp(std::int64_t couple, const JournalEffect& effect, Instant at) {
    const auto& [kind, item, media, deletedAt, json] = effect;
    const auto updated = database_.change("UPDATE items SET json = ?4 WHERE couple = ?1 AND id = ?2 AND media IS ?3",
                                          couple, item, media, json);
    if (!updated) return std::unexpected(updated.error());
    if (*updated > 0) return {};
    // It is new, or names other media.
    const auto before =
        database_.value<std::optional<UUID>>("SELECT media FROM items WHERE couple = ?1 AND id = ?2", couple, item);
    if (!before) return std::unexpected(before.error());
    auto done = *before ? database_.run("UPDATE items SET media = ?3, json = ?4 WHERE couple = ?1 AND id = ?2", couple,
                                        item, media, json)
                        : database_.run("INSERT INTO items(couple, id, media, json) VALUES(?1, ?2, ?3, ?4)", couple,
                                        item, media, json);
    if (done && media) {
        done = database_.run("UPDATE media SET unnamed_since = NULL WHERE couple = ?1 AND id = ?2", couple, *media);
    }
    if (done && *before && **before) done = nameNoLonger(couple, ***before, at);
    return done;
}

StoreResult<void> BoardTables::nameNoLonger(std::int64_t couple, const UUID& media, Instant at) {
    return database_.run("UPDATE media SET unnamed_since = ?3 WHERE couple = ?1 AND id = ?2 AND NOT EXISTS (SELECT 1 "
                         "FROM items WHERE couple = ?1 AND media = ?2)",
                         couple, media, at);
}

StoreResult<std::size_t> BoardTables::load(std::int64_t couple, RoomRecord& room) {
    auto rows = database_.query("SELECT version, background, tied_at, updated_at FROM couples WHERE num = ?1", couple);
    auto& board = room.board;
    if (rows.next()) rows >> room.version >> board.background >> board.threadTiedAt >> board.updatedAt;
    auto done = rows.ended();
    if (done) done = loadTombstones(couple, board);
    if (done) done = loadRecentBatches(couple, room);
    if (!done) return std::unexpected(std::move(done.error()));
    return loadItems(couple, board);
}

StoreResult<std::size_t> BoardTables::loadItems(std::int64_t couple, Board& board) {
    auto rows = database_.query("SELECT json FROM items WHERE couple = ?1 ORDER BY place", couple);
    std::size_t unreadable = 0;
    std::string_view json;
    while (rows.next()) {
        rows >> json;
        if (auto item = Wire::decode<BoardItem>(json)) {
            board.items.push_back(std::move(*item));
        } else {
            ++unreadable;
        }
    }
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    return unreadable;
}

StoreResult<void> BoardTables::loadTombstones(std::int64_t couple, Board& board) {
    auto rows = database_.query("SELECT id, deleted_at FROM tombstones WHERE couple = ?1", couple);
    Tombstone tombstone;
    while (rows.next()) {
        rows >> tombstone.itemId >> tombstone.deletedAt;
        board.tombstones.emplace(tombstone.itemId, tombstone.deletedAt);
    }
    return rows.ended();
}

StoreResult<void> BoardTables::loadRecentBatches(std::int64_t couple, RoomRecord& room) {
    auto rows = database_.query("SELECT id FROM batches WHERE couple = ?1 ORDER BY place DESC LIMIT ?2", couple,
                                std::int64_t{recentBatchCount});
    while (rows.next()) rows >> room.recentBatches.emplace_back();
    std::ranges::reverse(room.recentBatches);
    return rows.ended();
}

} // namespace lumaro
