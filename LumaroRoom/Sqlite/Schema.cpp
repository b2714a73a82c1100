// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/Schema.h"

#include <array>
#include <string>

namespace lumaro::Schema {
namespace {

// "LumR", in the file's header.
constexpr std::int64_t applicationId = 0x4c756d52;

// Instants are microseconds. Everything of a couple carries its number, which is short for its id and never used again.
constexpr const char* first = R"(
CREATE TABLE couples(
    num INTEGER PRIMARY KEY AUTOINCREMENT,
    id TEXT NOT NULL UNIQUE,
    created_at INTEGER NOT NULL,
    empty_since INTEGER,
    version INTEGER NOT NULL,
    filed INTEGER NOT NULL,
    background TEXT NOT NULL,
    tied_at INTEGER,
    updated_at INTEGER NOT NULL,
    name_a TEXT,
    name_b TEXT,
    seen_a INTEGER,
    seen_b INTEGER
) STRICT;
CREATE INDEX couples_by_age ON couples(empty_since) WHERE empty_since IS NOT NULL;

-- place: in the order of the board. media: what the item names.
CREATE TABLE items(
    place INTEGER PRIMARY KEY,
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    id BLOB NOT NULL,
    media BLOB,
    json TEXT NOT NULL
) STRICT;
CREATE UNIQUE INDEX items_by_id ON items(couple, id);
CREATE INDEX items_by_media ON items(couple, media) WHERE media IS NOT NULL;

CREATE TABLE tombstones(
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    id BLOB NOT NULL,
    deleted_at INTEGER NOT NULL,
    stored_at INTEGER NOT NULL,
    PRIMARY KEY(couple, id)
) STRICT, WITHOUT ROWID;
CREATE INDEX tombstones_by_age ON tombstones(stored_at);

-- The newest commits, a row for each of their effects; the first row of a commit has "at" and what goes with it. Rows
-- up to their couple's "filed" stand in the other tables already.
CREATE TABLE journal(
    place INTEGER PRIMARY KEY,
    couple INTEGER NOT NULL,
    batch BLOB,
    at INTEGER,
    background TEXT,
    tied_at INTEGER,
    updated_at INTEGER,
    kind TEXT,
    item BLOB,
    media BLOB,
    deleted_at INTEGER,
    json TEXT
) STRICT;

-- place: that of the commit in the journal.
CREATE TABLE batches(
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    place INTEGER NOT NULL,
    id BLOB NOT NULL,
    at INTEGER NOT NULL,
    PRIMARY KEY(couple, place)
) STRICT, WITHOUT ROWID;
CREATE UNIQUE INDEX batches_by_id ON batches(couple, id);

CREATE TABLE devices(
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    id TEXT NOT NULL,
    slot TEXT NOT NULL,
    token BLOB NOT NULL,
    PRIMARY KEY(couple, id)
) STRICT, WITHOUT ROWID;

CREATE TABLE links(
    id TEXT PRIMARY KEY,
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    inviter TEXT NOT NULL,
    expires_at INTEGER NOT NULL,
    is_replaced INTEGER NOT NULL
) STRICT, WITHOUT ROWID;
CREATE INDEX links_by_couple ON links(couple);
CREATE INDEX links_by_age ON links(expires_at);

CREATE TABLE codes(
    digits TEXT PRIMARY KEY,
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    inviter TEXT NOT NULL,
    expires_at INTEGER NOT NULL,
    is_used INTEGER NOT NULL
) STRICT, WITHOUT ROWID;
CREATE INDEX codes_by_couple ON codes(couple);
CREATE INDEX codes_by_age ON codes(expires_at);

CREATE TABLE wrong_codes(
    num INTEGER PRIMARY KEY,
    origin TEXT NOT NULL,
    at INTEGER NOT NULL
) STRICT;
CREATE INDEX wrong_codes_by_origin ON wrong_codes(origin, at);
CREATE INDEX wrong_codes_by_age ON wrong_codes(at);

-- bytes come last, so that the rest is read without them.
CREATE TABLE media(
    num INTEGER PRIMARY KEY,
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    id BLOB NOT NULL,
    size INTEGER NOT NULL,
    digest BLOB NOT NULL,
    content_type TEXT NOT NULL,
    unnamed_since INTEGER,
    bytes BLOB NOT NULL
) STRICT;
CREATE UNIQUE INDEX media_by_id ON media(couple, id);
CREATE INDEX media_by_age ON media(unnamed_since) WHERE unnamed_since IS NOT NULL;
)";

// size stands in an index, so that a couple's covers are weighed without them; bytes come last, as above.
constexpr const char* second = R"(
CREATE TABLE covers(
    num INTEGER PRIMARY KEY,
    couple INTEGER NOT NULL REFERENCES couples ON DELETE CASCADE,
    id BLOB NOT NULL,
    size INTEGER NOT NULL,
    used_at INTEGER NOT NULL,
    bytes BLOB NOT NULL
) STRICT;
CREATE UNIQUE INDEX covers_by_id ON covers(couple, id);
CREATE INDEX covers_by_use ON covers(couple, used_at, size);
CREATE INDEX covers_by_age ON covers(used_at);
)";

// Forward only: a step that has been delivered is never changed.
constexpr std::array steps{first, second};

std::unexpected<StoreError> failure(std::string message, StoreFault fault) {
    return std::unexpected(StoreError{std::move(message), fault});
}

StoreResult<void> take(Database& database, std::size_t step) {
    auto done = database.execute("BEGIN IMMEDIATE");
    if (!done) return done;
    done = database.execute(std::string{steps.at(step)} + "PRAGMA user_version = " + std::to_string(step + 1) +
                            ";PRAGMA application_id = " + std::to_string(applicationId) + ";COMMIT");
    if (!done && database.isInTransaction()) static_cast<void>(database.execute("ROLLBACK"));
    return done;
}

} // namespace

std::int64_t version() {
    return steps.size();
}

StoreResult<std::int64_t> check(Database& database) {
    const auto application = database.value<std::int64_t>("PRAGMA application_id");
    if (!application) return std::unexpected(application.error());
    const auto found = database.value<std::int64_t>("PRAGMA user_version");
    if (!found) return std::unexpected(found.error());
    const auto tables = database.value<std::int64_t>("SELECT count(*) FROM sqlite_schema");
    if (!tables) return std::unexpected(tables.error());
    if (*application == 0 && *found == 0 && *tables == 0) return 0;
    if (*application != applicationId) return failure("this is the database of another program", StoreFault::notOurs);
    if (*found > version()) {
        return failure("the database was written by a newer program: its tables are version " +
                           std::to_string(found->value_or(0)) + ", this program knows " + std::to_string(version()),
                       StoreFault::newerSchema);
    }
    return **found;
}

StoreResult<void> migrate(Database& database) {
    const auto found = check(database);
    if (!found) return std::unexpected(found.error());
    for (auto step = static_cast<std::size_t>(*found); step < steps.size(); ++step) {
        if (auto done = take(database, step); !done) return done;
    }
    return {};
}

} // namespace lumaro::Schema
