// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/Database.h"
#include "LumaroRoom/Sqlite/Maintenance.h"
#include "LumaroRoom/Sqlite/Schema.h"
#include "Tests/LumaroRoom/StoreFixture.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>

namespace lumaro {
namespace {

using samples::noon;
using samples::numberedId;

class SqliteStoreTest : public testing::Test {
protected:
    std::unique_ptr<SqliteStore> open() {
        auto opened = SqliteStore::open(path_, log_);
        EXPECT_TRUE(opened) << opened.error().message;
        return std::move(*opened);
    }
    static void inTransaction(TransactionalStore& store, auto&& work) {
        ASSERT_TRUE(store.beginTransaction());
        work();
        ASSERT_TRUE(store.commitTransaction());
    }
    // A couple with a board, committed; the transactions after it are the test's.
    std::unique_ptr<SqliteStore> openWithBoard() {
        auto store = open();
        inTransaction(*store, [&] {
            ASSERT_TRUE(store->createCouple(coupleNamed("kai")));
            ASSERT_EQ(store->commit(putUp("kai", 0, 1, {note(1, "a"), photo(2, 3)})), CommitOutcome::stored);
            ASSERT_TRUE(store->putMedia("kai", numberedId(3), {3, {}, "image/png"}, "abc", noon));
            ASSERT_TRUE(store->putCover("kai", numberedId(3), "abc", noon, minCoverWeight));
        });
        return store;
    }
    // Changes the file behind the store's back.
    void tamper(const std::string& statements, const std::string& path) {
        auto database = Database::open(path, Database::Access::write).value();
        const auto done = database.execute(statements);
        ASSERT_TRUE(done) << done.error().message;
    }
    void tamper(const std::string& statements) { tamper(statements, path_); }
    StoreFault faultOfOpening() { return SqliteStore::open(path_, log_).error().fault; }

    ScratchFolder folder_;
    std::string path_ = folder_.file("room.db");
    std::string backup_ = folder_.file("backup.db");
    RecordingLog log_;
};

TEST_F(SqliteStoreTest, KeepsTheFileToItsOwnerAndOneProcess) {
    auto store = openWithBoard();
    for (const auto* suffix : {"", "-wal", "-shm", ".lock"}) {
        struct stat status{};
        ASSERT_EQ(stat((path_ + suffix).c_str(), &status), 0) << suffix;
        EXPECT_EQ(status.st_mode & 0777U, 0600U) << suffix;
    }
    const auto second = SqliteStore::open(path_, log_);
    ASSERT_FALSE(second);
    EXPECT_EQ(second.error().fault, StoreFault::inUse);
    EXPECT_EQ(second.error().message, path_ + ": in use by another process (" + std::to_string(getpid()) + ")");
    store.reset();
    EXPECT_EQ(open()->loadRoom("kai").value()->board.items.size(), 2U);
}

TEST_F(SqliteStoreTest, RefusesWhatIsNotItsOwn) {
    openWithBoard().reset();
    tamper("PRAGMA user_version = " + std::to_string(Schema::version() + 1));
    EXPECT_EQ(faultOfOpening(), StoreFault::newerSchema);
    EXPECT_EQ(Maintenance::check(path_).error().fault, StoreFault::newerSchema);
    tamper("PRAGMA user_version = " + std::to_string(Schema::version()) +
           "; INSERT INTO journal(place, couple, at, kind) SELECT 999, num, 1, 'beam up' FROM couples");
    EXPECT_EQ(faultOfOpening(), StoreFault::damaged) << "a step that cannot be read is not passed over";
    path_ = folder_.file("other.db");
    std::ofstream{path_}.flush();
    tamper("CREATE TABLE theirs(a)");
    EXPECT_EQ(faultOfOpening(), StoreFault::notOurs);
    path_ = folder_.file("text.db");
    std::ofstream{path_} << std::string(5000, 'x');
    EXPECT_EQ(faultOfOpening(), StoreFault::notOurs);
    path_ = folder_.file("no/folder.db");
    EXPECT_EQ(faultOfOpening(), StoreFault::notFound);
    EXPECT_EQ(Maintenance::check(path_).error().fault, StoreFault::notFound);
}

TEST_F(SqliteStoreTest, ADatabaseOfTheFirstVersionIsKeptAndBroughtUpToDate) {
    openWithBoard().reset();
    tamper("DROP TABLE covers; PRAGMA user_version = 1");
    ASSERT_TRUE(Maintenance::backup(path_, backup_));
    EXPECT_TRUE(Maintenance::check(backup_)->isSound()) << "as it is";
    ASSERT_TRUE(Maintenance::restore(backup_, path_));
    const auto store = open();
    inTransaction(*store, [&] {
        EXPECT_EQ(store->loadRoom("kai").value()->board.items.size(), 2U);
        EXPECT_EQ(store->readMedia("kai", numberedId(3)).value(), "abc");
        EXPECT_EQ(store->putCover("kai", numberedId(3), "abc", noon, minCoverWeight), CoverOutcome::stored);
    });
    EXPECT_EQ(Maintenance::check(path_)->covers, 1);
}

TEST_F(SqliteStoreTest, AnItemThatCannotBeReadIsLeftOffTheBoardAndKept) {
    openWithBoard().reset();
    tamper(R"(UPDATE items SET json = replace(json, '"kind":"note"', '"kind":"hologram"'))");
    const auto store = open();
    inTransaction(*store, [&] {
        EXPECT_EQ(store->loadRoom("kai").value()->board.items, std::vector{photo(2, 3)});
        EXPECT_EQ(log_.lines.size(), 1U);
        ASSERT_EQ(store->commit(putUp("kai", 1, 2, {note(4, "b")})), CommitOutcome::stored);
    });
    EXPECT_EQ(Maintenance::check(path_)->faults.size(), 1U) << "it is still there";
    inTransaction(*store, [&] {
        auto deleted = putUp("kai", 2, 3, {});
        deleted.change.buried = {{numberedId(1), noon}};
        ASSERT_EQ(store->commit(deleted), CommitOutcome::stored);
        EXPECT_EQ(store->loadRoom("kai").value()->board.items.size(), 2U);
    });
    EXPECT_TRUE(Maintenance::check(path_)->isSound()) << Maintenance::check(path_)->text();
}

TEST_F(SqliteStoreTest, ANameThatIsNotTextCountsAsNoneAndIsKept) {
    openWithBoard().reset();
    tamper("UPDATE couples SET name_a = CAST(x'ff' AS TEXT), name_b = 'Ben'");
    auto store = open();
    EXPECT_EQ(store->loadRoom("kai").value()->members.names, (SlotNames{{}, "Ben"}));
    EXPECT_EQ(log_.lines, std::vector<std::string>{"store: a name is not UTF-8: it is kept, and left out"});
    inTransaction(*store, [&] { EXPECT_TRUE(store->setName("kai", PartnerID::a, "Ada")); });
    EXPECT_EQ(store->members("kai")->names, (SlotNames{"Ada", "Ben"}));
}

TEST_F(SqliteStoreTest, AFullDiskIsATypedErrorThatLeavesTheStoreInOrder) {
    openWithBoard().reset();
    const auto store = SqliteStore::open(path_, log_, {.maxBytes = 300'000}).value();
    ASSERT_TRUE(store->beginTransaction());
    StoreResult<void> put;
    for (std::uint64_t i = 10; put && i < 200; ++i) {
        put = store->putMedia("kai", numberedId(i), {}, std::string(100'000, 'x'), noon);
    }
    ASSERT_FALSE(put);
    EXPECT_EQ(put.error().fault, StoreFault::noSpace);
    store->rollBack();
    inTransaction(*store, [&] {
        EXPECT_EQ(store->mediaBytes("kai"), 3U);
        EXPECT_EQ(store->commit(putUp("kai", 1, 2, {note(4, "b")})), CommitOutcome::stored);
    });
}

TEST_F(SqliteStoreTest, ABackupOfALiveStoreIsItsLastCommit) {
    const auto store = openWithBoard();
    inTransaction(*store, [&] { ASSERT_EQ(store->commit(putUp("kai", 1, 2, {note(4, "b")})), CommitOutcome::stored); });
    ASSERT_TRUE(store->beginTransaction());
    ASSERT_EQ(store->commit(putUp("kai", 2, 3, {note(5, "not committed")})), CommitOutcome::stored);
    std::ofstream{backup_} << "an older backup";
    const auto done = Maintenance::backup(path_, backup_);
    ASSERT_TRUE(done) << done.error().message;
    ASSERT_TRUE(store->commitTransaction());
    EXPECT_EQ(Maintenance::check(path_)->waitingCommits, 2);
    EXPECT_EQ(
        Maintenance::check(backup_)->text(),
        "1 couples, 2 items, 0 tombstones, 1 batches, 1 media, 1 covers, 1 commits not checkpointed yet: sound\n");
    struct stat status{};
    ASSERT_EQ(stat(backup_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    EXPECT_EQ(Maintenance::backup(path_, path_).error().fault, StoreFault::denied);
    EXPECT_EQ(Maintenance::backup(folder_.file("none"), backup_).error().fault, StoreFault::notFound);
    EXPECT_TRUE(Maintenance::check(backup_)->isSound()) << "a failed backup leaves the last one";
}

TEST_F(SqliteStoreTest, ARestoredDatabaseIsTheBackupAndNothingOfTheOldOne) {
    auto store = openWithBoard();
    const auto commit = [&](std::int64_t version, std::uint64_t number) {
        const auto batch = static_cast<std::uint64_t>(version) + 1;
        inTransaction(*store, [&] {
            ASSERT_EQ(store->commit(putUp("kai", version, batch, {note(number, "n")})), CommitOutcome::stored);
        });
    };
    commit(1, 4);
    ASSERT_TRUE(Maintenance::backup(path_, backup_));
    commit(2, 5);
    EXPECT_EQ(Maintenance::restore(backup_, path_).error().fault, StoreFault::inUse);
    store.reset();
    // A log that was left behind, as after a kill.
    std::ofstream{path_ + "-wal"} << std::string(4096, 'x');
    ASSERT_TRUE(Maintenance::restore(backup_, path_));
    store = open();
    const auto room = store->loadRoom("kai").value().value();
    EXPECT_EQ(room.version, 2);
    EXPECT_EQ(room.board.items, (std::vector{note(1, "a"), photo(2, 3), note(4, "n")}));
    EXPECT_EQ(store->readMedia("kai", numberedId(3)).value(), "abc");
    store.reset();
    const auto onNewMachine = folder_.file("share/lumaro-room/room.db");
    ASSERT_TRUE(Maintenance::restore(backup_, onNewMachine)) << "where there was neither file nor folder";
    EXPECT_TRUE(Maintenance::check(onNewMachine)->isSound());
    std::ofstream{folder_.file("no-backup")} << std::string(5000, 'x');
    EXPECT_EQ(Maintenance::restore(folder_.file("no-backup"), path_).error().fault, StoreFault::notOurs);
    EXPECT_EQ(open()->loadRoom("kai").value()->version, 2) << "what was refused touched nothing";
}

TEST_F(SqliteStoreTest, CheckNamesWhatBreaksTheRules) {
    openWithBoard().reset();
    EXPECT_TRUE(Maintenance::check(path_)->isSound());
    const struct {
        const char* damage;
        const char* fault;
    } cases[] = {
        {"UPDATE items SET json = '{}' WHERE media IS NULL", "cannot be read"},
        {"UPDATE items SET json = (SELECT json FROM items WHERE media IS NOT NULL)", "under another id"},
        {"INSERT INTO tombstones SELECT couple, id, 1, 1 FROM items", "has a tombstone"},
        {"INSERT INTO batches SELECT couple, place + 1000, randomblob(16), 1 FROM items", "fewer commits"},
        {"UPDATE media SET bytes = x''", "a medium has lost bytes"},
        {"UPDATE covers SET bytes = x''", "a cover has lost bytes"},
        {"UPDATE couples SET name_b = CAST(x'c328' AS TEXT)", "a name is not UTF-8"},
        {"INSERT INTO journal(place, couple, kind, item, json) SELECT 999, num, 'putUp', randomblob(16), '' FROM "
         "couples",
         "cannot be read"},
        {"PRAGMA foreign_keys = OFF; DELETE FROM couples", "rows of no couple"},
        {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60) INSERT INTO items(couple, id, "
         "json) SELECT couple, randomblob(16), json FROM items JOIN n WHERE media IS NULL",
         "more items than a board holds"},
    };
    for (const auto& [damage, fault] : cases) {
        const auto copy = folder_.file("copy.db");
        ASSERT_TRUE(Maintenance::backup(path_, copy));
        tamper(damage, copy);
        EXPECT_NE(Maintenance::check(copy)->text().find(fault), std::string::npos) << damage << "\n"
                                                                                   << Maintenance::check(copy)->text();
    }
}

} // namespace
} // namespace lumaro
