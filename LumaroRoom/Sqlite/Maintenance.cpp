// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/Maintenance.h"

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Support/Unicode.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Sqlite/Database.h"
#include "LumaroRoom/Sqlite/DatabaseFiles.h"
#include "LumaroRoom/Sqlite/Schema.h"
#include "Platform/Posix/PosixFileSystem.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace lumaro {
namespace {

using Access = Database::Access;

StoreError at(const std::string& path, const StoreError& error) {
    return {path + ": " + error.message, error.fault};
}

template <class T>
StoreResult<void> fileDone(const FileResult<T>& result) {
    if (!result) return std::unexpected(storeError(result.error()));
    return {};
}

StoreResult<void> removeIfThere(const std::string& path) {
    PosixFileSystem files;
    const auto removed = files.removeFile(path);
    if (!removed && removed.error().fault == FileFault::notFound) return {};
    return fileDone(removed);
}

// What the engine finds wrong, a line each.
StoreResult<std::vector<std::string>> engineFaults(Database& database) {
    std::vector<std::string> faults;
    auto rows = database.query("PRAGMA integrity_check(20)");
    std::string line;
    while (rows.next()) {
        rows >> line;
        if (line != "ok") faults.push_back(line);
    }
    if (auto ended = rows.ended(); !ended) return std::unexpected(std::move(ended.error()));
    auto strays = database.query("SELECT \"table\", count(*) FROM pragma_foreign_key_check GROUP BY 1");
    std::string table;
    std::int64_t count = 0;
    while (strays.next()) {
        strays >> table >> count;
        faults.push_back(table + ": " + std::to_string(count) + " rows of no couple");
    }
    if (auto ended = strays.ended(); !ended) return std::unexpected(std::move(ended.error()));
    return faults;
}

// A database of ours that the engine finds nothing wrong with.
StoreResult<void> verify(const std::string& path) {
    auto database = Database::open(path, Access::read);
    if (!database) return std::unexpected(std::move(database.error()));
    const auto version = Schema::check(*database);
    if (!version) return std::unexpected(at(path, version.error()));
    if (*version == 0) return std::unexpected(StoreError{path + ": the database is empty", StoreFault::notOurs});
    const auto faults = engineFaults(*database);
    if (!faults) return std::unexpected(at(path, faults.error()));
    if (!faults->empty()) return std::unexpected(StoreError{path + ": " + faults->front(), StoreFault::damaged});
    return {};
}

// A whole copy on the disk, as of one moment, for its owner alone.
StoreResult<void> copyTo(const std::string& source, const std::string& target) {
    auto database = Database::open(source, Access::write);
    if (!database) return std::unexpected(std::move(database.error()));
    const auto version = Schema::check(*database);
    if (!version) return std::unexpected(at(source, version.error()));
    auto done = removeIfThere(target);
    if (done) done = createPrivately(target);
    if (done) done = database->run("VACUUM INTO ?1", target);
    if (done) done = fileDone(PosixFileSystem{}.syncFile(target));
    if (done) done = verify(target);
    if (!done) static_cast<void>(removeIfThere(target));
    return done;
}

StoreResult<void> moveInto(const std::string& path, const std::string& place) {
    PosixFileSystem files;
    if (auto moved = fileDone(files.rename(path, place)); !moved) return moved;
    return fileDone(files.syncDirectory(folderOf(place)));
}

// Folds the old database's log into it, so that it is whole without it; a damaged one is past caring.
void settle(const std::string& path) {
    auto database = Database::open(path, Access::write);
    if (database) static_cast<void>(database->execute("PRAGMA wal_checkpoint(TRUNCATE)"));
}

std::string described(const UUID& item, std::int64_t couple) {
    return "item " + item.lowerString() + " of couple number " + std::to_string(couple);
}

StoreResult<void> checkItems(Database& database, std::vector<std::string>& faults) {
    auto rows = database.query("SELECT couple, id, json FROM items UNION ALL SELECT couple, item, json FROM journal "
                               "WHERE place > (SELECT filed FROM couples WHERE num = couple) AND kind = 'putUp'");
    std::int64_t couple = 0;
    UUID id;
    std::string_view json;
    while (rows.next()) {
        rows >> couple >> id >> json;
        const auto item = Wire::decode<BoardItem>(json);
        if (!item) faults.push_back(described(id, couple) + " cannot be read: " + item.error().path);
        if (item && item->id != id) faults.push_back(described(id, couple) + " is stored under another id");
    }
    return rows.ended();
}

// Every row is a couple with this fault.
StoreResult<void> expectNone(Rows rows, const char* fault, std::vector<std::string>& faults) {
    std::int64_t couple = 0;
    while (rows.next()) {
        rows >> couple;
        faults.push_back("couple number " + std::to_string(couple) + ": " + fault);
    }
    return rows.ended();
}

StoreResult<void> checkNames(Database& database, std::vector<std::string>& faults) {
    auto rows = database.query("SELECT num, coalesce(name_a, ''), coalesce(name_b, '') FROM couples");
    std::int64_t couple = 0;
    std::string_view a;
    std::string_view b;
    while (rows.next()) {
        rows >> couple >> a >> b;
        if (!isUtf8(a) || !isUtf8(b)) {
            faults.push_back("couple number " + std::to_string(couple) + ": a name is not UTF-8");
        }
    }
    return rows.ended();
}

StoreResult<void> checkCouples(Database& database, std::vector<std::string>& faults) {
    const auto maxItems = static_cast<std::int64_t>(BoardSpec::maxLiveItems);
    auto done = expectNone(database.query("SELECT couple FROM items GROUP BY couple HAVING count(*) > ?1", maxItems),
                           "more items than a board holds", faults);
    if (done) {
        done = expectNone(database.query("SELECT DISTINCT couple FROM items JOIN tombstones USING(couple, id)"),
                          "an item on the board has a tombstone", faults);
    }
    if (done) {
        done = expectNone(
            database.query(
                "SELECT num FROM couples WHERE version < (SELECT count(*) FROM batches WHERE couple = couples.num)"),
            "fewer commits than batches", faults);
    }
    if (done) {
        done = expectNone(database.query("SELECT couple FROM media WHERE size <> length(bytes)"),
                          "a medium has lost bytes", faults);
    }
    return done;
}

StoreResult<void> checkCovers(Database& database, Maintenance::CheckReport& report) {
    const auto count = database.value<std::int64_t>("SELECT count(*) FROM covers");
    if (!count) return std::unexpected(count.error());
    report.covers = count->value_or(0);
    return expectNone(database.query("SELECT couple FROM covers WHERE size <> length(bytes)"), "a cover has lost bytes",
                      report.faults);
}

StoreResult<void> countRows(Database& database, Maintenance::CheckReport& report) {
    auto rows =
        database.query("SELECT (SELECT count(*) FROM couples), (SELECT count(*) FROM items), (SELECT count(*) FROM "
                       "tombstones), (SELECT count(*) FROM batches), (SELECT count(*) FROM media), (SELECT count(*) "
                       "FROM journal WHERE at IS NOT NULL AND place > (SELECT filed FROM couples WHERE num = couple))");
    if (rows.next()) {
        rows >> report.couples >> report.items >> report.tombstones >> report.batches >> report.media >>
            report.waitingCommits;
    }
    return rows.ended();
}

} // namespace

StoreResult<void> Maintenance::backup(const std::string& database, const std::string& file) {
    std::error_code unknown;
    if (std::filesystem::equivalent(database, file, unknown)) {
        return std::unexpected(StoreError{file + ": this is the database itself", StoreFault::denied});
    }
    const auto partial = file + ".partial";
    auto done = copyTo(database, partial);
    if (done) done = moveInto(partial, file);
    return done;
}

StoreResult<void> Maintenance::restore(const std::string& file, const std::string& database) {
    auto done = verify(file);
    if (done) done = makeFolderOf(database);
    if (!done) return done;
    const auto lock = lockDatabase(database);
    if (!lock) return std::unexpected(lock.error());
    const auto partial = database + ".partial";
    done = copyTo(file, partial);
    if (!done) return done;
    // The old log must not be taken for the new database's.
    settle(database);
    for (const auto* suffix : {"-wal", "-shm"}) {
        if (done) done = removeIfThere(database + suffix);
    }
    if (done) done = moveInto(partial, database);
    return done;
}

StoreResult<Maintenance::CheckReport> Maintenance::check(const std::string& database) {
    auto opened = Database::open(database, Access::read);
    if (!opened) return std::unexpected(std::move(opened.error()));
    const auto version = Schema::check(*opened);
    if (!version) return std::unexpected(at(database, version.error()));
    // One transaction, so that what is compared is of one moment.
    auto done = opened->run("BEGIN");
    CheckReport report;
    if (done) {
        auto faults = engineFaults(*opened);
        if (!faults) return std::unexpected(at(database, faults.error()));
        report.faults = std::move(*faults);
    }
    if (done && *version > 0) done = countRows(*opened, report);
    if (done && *version > 0) done = checkItems(*opened, report.faults);
    if (done && *version > 0) done = checkCouples(*opened, report.faults);
    if (done && *version > 0) done = checkNames(*opened, report.faults);
    if (done && *version > 1) done = checkCovers(*opened, report); // which the first version did not have
    if (!done) return std::unexpected(at(database, done.error()));
    return report;
}

std::string Maintenance::CheckReport::text() const {
    std::string text;
    const std::pair<std::int64_t, const char*> figures[] = {
        {couples, " couples, "},
        {items, " items, "},
        {tombstones, " tombstones, "},
        {batches, " batches, "},
        {media, " media, "},
        {covers, " covers, "},
        {waitingCommits, " commits not checkpointed yet: "},
    };
    for (const auto& [count, name] : figures) text.append(std::to_string(count)).append(name);
    text.append(isSound() ? "sound" : std::to_string(faults.size()) + " faults").append("\n");
    for (const auto& fault : faults) text.append(fault).append("\n");
    return text;
}

} // namespace lumaro
