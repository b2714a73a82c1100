// SPDX-License-Identifier: Apache-2.0
// What every store promises, held by the one on the disk and, but for media, by the one in memory.
#include "Tests/Fakes/MemoryStore.h"
#include "Tests/LumaroRoom/StoreFixture.h"

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;

struct InMemory {
    MemoryStore store;
};

struct OnDisk {
    ScratchFolder folder;
    RecordingLog log;
    std::unique_ptr<SqliteStore> opened = SqliteStore::open(folder.file("room.db"), log).value();
    SqliteStore& store = *opened;
};

template <class Place>
class StoreContract : public testing::Test {
protected:
    StoreContract() {
        begin();
        EXPECT_TRUE(store().createCouple(coupleNamed("kai")));
    }
    TransactionalStore& store() { return place_.store; }
    void begin() { ASSERT_TRUE(store().beginTransaction()); }
    void commitAll() {
        ASSERT_TRUE(store().commitTransaction());
        begin();
    }
    CommitOutcome commit(const Commit& commit) { return store().commit(commit).value(); }
    RoomRecord room(const std::string& couple = "kai") { return store().loadRoom(couple).value().value(); }
    static std::vector<UUID> ids(std::initializer_list<std::uint64_t> numbers) {
        std::vector<UUID> ids;
        for (const auto number : numbers) ids.push_back(numberedId(number));
        return ids;
    }
    void putMedia(std::uint64_t id, std::string_view bytes, Instant at = noon) {
        ASSERT_TRUE(store().putMedia("kai", numberedId(id), {bytes.size(), {}, "image/png"}, bytes, at));
    }
    bool hasMedia(std::uint64_t id) { return store().media("kai", numberedId(id)).value().has_value(); }
    // Of JPEGs that weigh no more than any does.
    CoverOutcome putCover(std::uint64_t id, Instant at, std::size_t covers) {
        return store().putCover("kai", numberedId(id), "x", at, covers * minCoverWeight).value();
    }
    // The covers 1 to 9 that are there; a look at so early an instant is no use.
    std::vector<std::uint64_t> covers() {
        std::vector<std::uint64_t> there;
        for (std::uint64_t id = 1; id < 10; ++id) {
            if (store().readCover("kai", numberedId(id), noon).value()) there.push_back(id);
        }
        return there;
    }
    void sweepAll(Instant now) {
        while (store().sweep(now).value()) {
        }
    }

    Place place_;
};

using Places = testing::Types<InMemory, OnDisk>;
TYPED_TEST_SUITE(StoreContract, Places);

TYPED_TEST(StoreContract, AnUnknownCoupleHasNothingAndChangesNothing) {
    auto& store = this->store();
    EXPECT_FALSE(store.createCouple(coupleNamed("kai"))) << "there is one of this name";
    EXPECT_FALSE(store.loadRoom("bo")->has_value() || store.couple("bo")->has_value());
    EXPECT_EQ(this->commit(putUp("bo", 0, 1, {})), CommitOutcome::versionConflict);
    EXPECT_TRUE(store.setLastSeen("bo", PartnerID::a, noon) && store.setName("bo", PartnerID::a, "Bo"));
    EXPECT_TRUE(store.removeDevice("bo", "d", noon) && store.replaceLinks("bo"));
    EXPECT_EQ(store.members("bo"), Members{});
    EXPECT_FALSE(store.putDevice("bo", device("d", PartnerID::a)));
    EXPECT_FALSE(store.putLink({"i", "bo", PartnerID::a, noon, false}));
    EXPECT_FALSE(store.putCode({"000000", "bo", PartnerID::a, noon, false}, noon));
    EXPECT_FALSE(store.couple("bo")->has_value());
}

TYPED_TEST(StoreContract, ABoardIsKeptToTheMicrosecond) {
    auto commit = putUp("kai", 0, 1, {});
    commit.change.background = BackgroundID::lilac;
    commit.change.threadTiedAt = noon + 1us;
    commit.change.updatedAt = noon - 100'000h + 3us;
    commit.change.buried = {{numberedId(1), Instant::max()}};
    ASSERT_EQ(this->commit(commit), CommitOutcome::stored);
    const auto board = this->room().board;
    EXPECT_EQ(board.background, BackgroundID::lilac);
    EXPECT_EQ(board.threadTiedAt, noon + 1us);
    EXPECT_EQ(board.updatedAt, noon - 100'000h + 3us);
    EXPECT_EQ(board.tombstones.at(numberedId(1)), Instant::max());
}

TYPED_TEST(StoreContract, ABatchIsTakenOnceAndAVersionIsUsedOnce) {
    ASSERT_TRUE(this->store().createCouple(coupleNamed("bo")));
    ASSERT_EQ(this->commit(putUp("kai", 0, 1, {note(1, "a")})), CommitOutcome::stored);
    const struct {
        Commit commit;
        CommitOutcome outcome;
    } cases[] = {
        {putUp("kai", 1, 1, {note(2, "twice")}), CommitOutcome::duplicateBatch},
        {putUp("kai", 0, 1, {note(2, "twice, and late")}), CommitOutcome::duplicateBatch},
        {putUp("kai", 0, 2, {note(2, "late")}), CommitOutcome::versionConflict},
        {putUp("kai", 2, 2, {note(2, "early")}), CommitOutcome::versionConflict},
        {putUp("bo", 0, 1, {note(2, "another couple's")}), CommitOutcome::stored},
    };
    for (const auto& [commit, outcome] : cases) EXPECT_EQ(this->commit(commit), outcome);
    EXPECT_EQ(this->room().board.items, std::vector{note(1, "a")});
    EXPECT_EQ(this->room().version, 1);
    EXPECT_EQ(this->room().recentBatches, this->ids({1}));
    auto tied = putUp("kai", 1, 0, {});
    tied.batchId.reset();
    EXPECT_EQ(this->commit(tied), CommitOutcome::stored);
    EXPECT_EQ(this->room().recentBatches, this->ids({1}));
}

TYPED_TEST(StoreContract, RemembersTheNewestBatchesInTheOrderOfCommits) {
    for (std::uint64_t i = 0; i < 300; ++i) {
        const auto version = static_cast<std::int64_t>(i);
        ASSERT_EQ(this->commit(putUp("kai", version, 1000 - i, {})), CommitOutcome::stored);
        if (i % 100 == 70) this->commitAll();
    }
    const auto recent = this->room().recentBatches;
    ASSERT_EQ(recent.size(), recentBatchCount);
    EXPECT_EQ(recent.front(), numberedId(1000 - 300 + recentBatchCount));
    EXPECT_EQ(recent.back(), numberedId(701));
    EXPECT_EQ(this->commit(putUp("kai", 300, 1000, {})), CommitOutcome::duplicateBatch);
}

// Against boards that the rules of the board make, with transactions that end either way.
TYPED_TEST(StoreContract, AnyBatchesLeaveTheBoardsOfTheRules) {
    samples::Random random{5};
    std::vector<ModelRoom> rooms{ModelRoom{"kai"}, ModelRoom{"bo"}};
    ASSERT_TRUE(this->store().createCouple(coupleNamed("bo")));
    this->commitAll();
    auto durable = rooms;
    int undone = 0;
    for (int step = 0; step < 600; ++step) {
        auto& room = rooms[samples::pick(random, std::size_t{0}, std::size_t{1})];
        ASSERT_EQ(this->commit(room.next(random)), CommitOutcome::stored) << step;
        if (samples::chance(random, 0.1)) room.expectStoredIn(this->store());
        if (samples::chance(random, 0.3)) {
            this->commitAll();
            durable = rooms;
        } else if (samples::chance(random, 0.1)) {
            this->store().rollBack();
            this->begin();
            rooms = durable;
            ++undone;
        }
        if (this->HasFailure()) FAIL() << step;
    }
    for (const auto& room : rooms) room.expectStoredIn(this->store());
    EXPECT_GT(undone, 20);
}

TYPED_TEST(StoreContract, ATransactionThatIsRolledBackLeavesNothing) {
    auto& store = this->store();
    ASSERT_TRUE(store.putCode({"111111", "kai", PartnerID::a, noon + 1h, false}, noon));
    ASSERT_TRUE(store.putLink({"link", "kai", PartnerID::a, noon + 1h, false}));
    this->commitAll();
    const auto before = this->room();
    ASSERT_EQ(this->commit(putUp("kai", 0, 1, {photo(1, 1)})), CommitOutcome::stored);
    ASSERT_TRUE(store.putDevice("kai", device("d", PartnerID::a)) && store.setName("kai", PartnerID::a, "Kai"));
    ASSERT_TRUE(store.createCouple(coupleNamed("bo")) && store.setLastSeen("kai", PartnerID::b, noon));
    ASSERT_TRUE(store.useCode("111111") && store.replaceLinks("kai") && store.addWrongCode("ip", noon));
    store.rollBack();
    this->begin();
    EXPECT_EQ(this->room().board, before.board);
    EXPECT_EQ(this->room().members, before.members);
    EXPECT_FALSE(store.lastSeen("kai")->b || store.couple("bo")->has_value());
    EXPECT_FALSE(store.code("111111").value()->isUsed || store.link("link").value()->isReplaced);
    EXPECT_EQ(store.wrongCodes("ip", noon)->ofAll, 0U);
    EXPECT_EQ(this->commit(putUp("kai", 0, 1, {note(1, "a")})), CommitOutcome::stored);
    EXPECT_TRUE(store.createCouple(coupleNamed("bo")));
}

TYPED_TEST(StoreContract, DevicesComeInPlaceOfTheirOldRecordsAndTheLastOneEmptiesTheCouple) {
    auto& store = this->store();
    const auto phone = device("phone", PartnerID::b);
    auto laptop = device("laptop", PartnerID::a);
    ASSERT_TRUE(store.putDevice("kai", phone) && store.putDevice("kai", laptop));
    laptop.slot = PartnerID::b;
    laptop.token.fill(9);
    ASSERT_TRUE(store.putDevice("kai", laptop) && store.setName("kai", PartnerID::b, "Bo \"né\" 🍊"));
    EXPECT_EQ(store.members("kai"), (Members{{std::nullopt, "Bo \"né\" 🍊"}, {laptop, phone}}));
    EXPECT_EQ(this->room().members, store.members("kai"));
    ASSERT_TRUE(store.setName("kai", PartnerID::b, std::nullopt) && store.removeDevice("kai", "none", noon));
    ASSERT_TRUE(store.removeDevice("kai", "phone", noon + 1s));
    EXPECT_EQ(store.couple("kai").value()->emptySince, std::nullopt);
    ASSERT_TRUE(store.removeDevice("kai", "laptop", noon + 2s) && store.removeDevice("kai", "laptop", noon + 3s));
    EXPECT_EQ(store.couple("kai").value()->emptySince, noon + 2s);
    EXPECT_EQ(store.members("kai"), Members{});
    ASSERT_TRUE(store.putDevice("kai", phone) && store.setLastSeen("kai", PartnerID::b, noon + 4us));
    EXPECT_EQ(store.couple("kai").value()->emptySince, std::nullopt);
    EXPECT_EQ(store.lastSeen("kai")->b, noon + 4us);
    EXPECT_EQ(store.lastSeen("kai")->a, std::nullopt);
}

TYPED_TEST(StoreContract, TheCurrentLinkIsTheOneThatLivesLongest) {
    auto& store = this->store();
    const LinkRecord early{"early", "kai", PartnerID::a, noon + 1h, false};
    const LinkRecord late{"late", "kai", PartnerID::b, noon + 2h, false};
    ASSERT_TRUE(store.createCouple(coupleNamed("bo")) && store.putLink(late) && store.putLink(early));
    ASSERT_TRUE(store.putLink({"other", "bo", PartnerID::a, noon + 9h, false}));
    EXPECT_EQ(store.link("early").value(), early);
    EXPECT_EQ(store.currentLink("kai", noon).value(), late);
    EXPECT_EQ(store.currentLink("kai", noon + 2h).value(), std::nullopt);
    ASSERT_TRUE(store.replaceLinks("kai"));
    EXPECT_EQ(store.currentLink("kai", noon).value(), std::nullopt);
    EXPECT_TRUE(store.link("late").value()->isReplaced);
    EXPECT_FALSE(store.link("other").value()->isReplaced);
}

TYPED_TEST(StoreContract, ACodeEndsTheCouplesOthersAndYieldsOnlyWhenItIsDead) {
    auto& store = this->store();
    const auto code = [](const char* digits, const char* couple, Instant expiresAt) {
        return CodeRecord{digits, couple, PartnerID::b, expiresAt, false};
    };
    ASSERT_TRUE(store.createCouple(coupleNamed("bo")));
    EXPECT_EQ(store.putCode(code("111111", "kai", noon + 1h), noon), true);
    EXPECT_EQ(store.putCode(code("222222", "bo", noon + 1h), noon), true);
    EXPECT_EQ(store.putCode(code("222222", "kai", noon + 2h), noon), false) << "alive";
    EXPECT_EQ(store.code("111111").value(), code("111111", "kai", noon + 1h)) << "nothing was changed";
    EXPECT_EQ(store.putCode(code("333333", "kai", noon + 1h), noon), true);
    EXPECT_TRUE(store.code("111111").value()->isUsed);
    EXPECT_EQ(store.putCode(code("333333", "kai", noon + 3h), noon), true) << "the same couple's again";
    EXPECT_EQ(store.code("333333").value(), code("333333", "kai", noon + 3h));
    EXPECT_EQ(store.putCode(code("222222", "kai", noon + 5h), noon + 1h), true) << "expired";
    ASSERT_TRUE(store.useCode("222222"));
    EXPECT_EQ(store.putCode(code("222222", "bo", noon + 5h), noon), true) << "used";
    EXPECT_EQ(store.code("222222").value()->coupleId, "bo");
    EXPECT_EQ(store.code("999999").value(), std::nullopt);
}

TYPED_TEST(StoreContract, WrongCodesAreCountedByOriginAndInAllAndForgottenAfterADay) {
    auto& store = this->store();
    for (const auto& [origin, at] : {std::pair{"x", noon}, {"x", noon + 1h}, {"y", noon + 1h}, {"x", noon + 2h}}) {
        ASSERT_TRUE(store.addWrongCode(origin, at));
    }
    const auto counted = [&](const char* origin, Instant since) {
        const auto counts = store.wrongCodes(origin, since).value();
        return std::pair{counts.ofOrigin, counts.ofAll};
    };
    EXPECT_EQ(counted("x", noon + 1h), (std::pair{std::size_t{2}, std::size_t{3}}));
    EXPECT_EQ(counted("z", noon), (std::pair{std::size_t{0}, std::size_t{4}}));
    this->sweepAll(noon + 25h);
    EXPECT_EQ(counted("x", noon), (std::pair{std::size_t{1}, std::size_t{1}}));
}

TYPED_TEST(StoreContract, BatchesAndTombstonesAreKeptFourHundredDays) {
    for (std::uint64_t i = 1; i <= 700; ++i) {
        auto commit = putUp("kai", static_cast<std::int64_t>(i) - 1, i, {});
        commit.at = i <= 600 ? noon : noon + 24h;
        commit.change.buried = {{numberedId(i), noon - 9000h}};
        ASSERT_EQ(this->commit(commit), CommitOutcome::stored);
    }
    this->sweepAll(noon + batchLifetime - 1us);
    EXPECT_EQ(this->room().board.tombstones.size(), 700U);
    EXPECT_EQ(this->commit(putUp("kai", 700, 1, {})), CommitOutcome::duplicateBatch);
    this->sweepAll(noon + batchLifetime);
    EXPECT_EQ(this->room().board.tombstones.size(), 100U);
    EXPECT_EQ(this->room().recentBatches.size(), 100U);
    EXPECT_EQ(this->commit(putUp("kai", 700, 1, {})), CommitOutcome::stored);
    EXPECT_EQ(this->commit(putUp("kai", 701, 601, {})), CommitOutcome::duplicateBatch);
}

TYPED_TEST(StoreContract, WaysInAndEmptyCouplesGoWhenTheirTimeIsUp) {
    auto& store = this->store();
    ASSERT_TRUE(store.createCouple(coupleNamed("bo")) && store.putDevice("bo", device("d", PartnerID::a)));
    ASSERT_TRUE(store.putLink({"link", "bo", PartnerID::a, noon, false}));
    ASSERT_TRUE(store.putCode({"111111", "bo", PartnerID::a, noon, false}, noon));
    ASSERT_EQ(this->commit(putUp("bo", 0, 1, {note(1, "a")})), CommitOutcome::stored);
    ASSERT_TRUE(store.removeDevice("bo", "d", noon + 1h));
    this->sweepAll(noon + codeMemory - 1us);
    EXPECT_TRUE(store.code("111111")->has_value());
    this->sweepAll(noon + graceTime - 1us);
    EXPECT_FALSE(store.code("111111")->has_value());
    EXPECT_TRUE(store.link("link")->has_value());
    this->sweepAll(noon + graceTime);
    EXPECT_FALSE(store.link("link")->has_value());
    EXPECT_TRUE(store.couple("bo")->has_value());
    this->sweepAll(noon + graceTime + 1h);
    EXPECT_FALSE(store.couple("bo")->has_value() || store.loadRoom("bo")->has_value());
    EXPECT_TRUE(store.couple("kai")->has_value()) << "never had a device, and so was never left";
    ASSERT_TRUE(store.createCouple(coupleNamed("bo")));
    EXPECT_TRUE(this->room("bo").board.items.empty() && this->room("bo").recentBatches.empty());
}

TYPED_TEST(StoreContract, CoversAreWrittenOnce) {
    using enum CoverOutcome;
    auto& store = this->store();
    const std::string bytes{"\xff\xd8\0\xff", 4};
    const auto id = numberedId(1);
    EXPECT_EQ(store.putCover("kai", id, bytes, noon, 9999), stored);
    EXPECT_EQ(store.putCover("kai", id, bytes, noon, 9999), isThere);
    EXPECT_EQ(store.putCover("kai", id, bytes + "x", noon, 9999), otherBytes);
    EXPECT_EQ(store.readCover("kai", id, noon).value(), bytes);
    EXPECT_EQ(store.readCover("kai", numberedId(2), noon).value(), std::nullopt);
    EXPECT_EQ(store.readCover("bo", id, noon).value(), std::nullopt);
    EXPECT_FALSE(store.putCover("bo", id, bytes, noon, 9999));
    this->commitAll();
    this->putCover(2, noon, 1);
    store.rollBack();
    this->begin();
    EXPECT_EQ(this->covers(), (std::vector<std::uint64_t>{1})) << "the room that was made is undone, too";
}

TYPED_TEST(StoreContract, P44_TheCoversUsedLongestAgoMakeRoom) {
    using Ids = std::vector<std::uint64_t>;
    auto& store = this->store();
    ASSERT_TRUE(store.createCouple(coupleNamed("bo")));
    ASSERT_TRUE(store.putCover("bo", numberedId(8), "x", noon, minCoverWeight));
    for (const std::uint64_t id : {1, 2, 3}) this->putCover(id, noon + std::chrono::hours{id}, 3);
    this->putCover(1, noon + 4h, 3);
    ASSERT_TRUE(store.readCover("kai", numberedId(2), noon + 4h + 1us));
    this->putCover(4, noon + 5h, 3);
    EXPECT_EQ(this->covers(), (Ids{1, 2, 4})) << "1 was put again and 2 read";
    ASSERT_TRUE(store.readCover("kai", numberedId(1), noon + 5h));
    this->putCover(5, noon + 6h, 3);
    EXPECT_EQ(this->covers(), (Ids{2, 4, 5})) << "1 was read, but within an hour";
    ASSERT_TRUE(
        store.putCover("kai", numberedId(6), std::string(minCoverWeight + 1, 'x'), noon + 7h, 3 * minCoverWeight));
    EXPECT_EQ(this->covers(), (Ids{5, 6})) << "6 weighs as much as two, and a byte";
    this->putCover(7, noon + 8h, 0);
    EXPECT_EQ(this->covers(), Ids{7}) << "never refused";
    EXPECT_TRUE(store.readCover("bo", numberedId(8), noon)->has_value());
}

TYPED_TEST(StoreContract, P44_CoversGoAfterThirtyDaysWithoutUseAndWithTheirCouple) {
    auto& store = this->store();
    for (std::uint64_t id = 1; id < 600; ++id) this->putCover(id, noon, 600);
    ASSERT_TRUE(store.readCover("kai", numberedId(2), noon + 24h));
    this->sweepAll(noon + graceTime - 1us);
    EXPECT_EQ(this->covers().size(), 9U);
    this->sweepAll(noon + graceTime);
    EXPECT_EQ(this->covers(), (std::vector<std::uint64_t>{2}));
    for (std::uint64_t id = 1; id < 600; ++id) this->putCover(id, noon + 48h, 600);
    ASSERT_TRUE(store.putDevice("kai", device("d", PartnerID::a)) && store.removeDevice("kai", "d", noon));
    this->sweepAll(noon + graceTime);
    EXPECT_FALSE(store.couple("kai")->has_value());
    ASSERT_TRUE(store.createCouple(coupleNamed("kai")));
    EXPECT_TRUE(this->covers().empty());
}

// Media are kept on the disk alone.
using StoredMedia = StoreContract<OnDisk>;

TEST_F(StoredMedia, MediaAreWrittenOnceAndWeighed) {
    auto& store = this->store();
    const std::string bytes{"\x89PNG\0\xff", 6};
    Store::MediaRecord record{bytes.size(), {}, "image/png"};
    record.digest.fill(7);
    ASSERT_TRUE(store.putMedia("kai", numberedId(1), record, bytes, noon));
    putMedia(1, "other");
    putMedia(2, "four");
    putCover(1, noon, 1);
    EXPECT_EQ(store.readMedia("kai", numberedId(1)).value(), bytes);
    EXPECT_EQ(store.media("kai", numberedId(1)).value()->digest, record.digest);
    EXPECT_EQ(store.media("kai", numberedId(1)).value()->contentType, "image/png");
    EXPECT_EQ(store.mediaBytes("kai"), 10U);
    EXPECT_EQ(store.readMedia("bo", numberedId(1)).value(), std::nullopt);
    EXPECT_EQ(store.mediaBytes("bo"), 0U);
    EXPECT_FALSE(store.putMedia("bo", numberedId(1), {}, "x", noon));
    commitAll();
    putMedia(3, "undone");
    store.rollBack();
    begin();
    EXPECT_FALSE(hasMedia(3));
}

TEST_F(StoredMedia, MediaThatNothingNamesGoAfterThirtyDays) {
    for (const std::uint64_t id : {1, 2, 3, 4}) putMedia(id, "x");
    auto at = [](Commit commit, Instant when) {
        commit.at = when;
        return commit;
    };
    ASSERT_EQ(commit(putUp("kai", 0, 1, {photo(1, 1), photo(2, 2), photo(3, 3), photo(5, 5)})), CommitOutcome::stored);
    putMedia(5, "came after what names it");
    auto down = at(putUp("kai", 1, 2, {}), noon + 24h);
    down.change.removed = ids({1});
    ASSERT_EQ(commit(down), CommitOutcome::stored);
    ASSERT_EQ(commit(at(putUp("kai", 2, 3, {photo(2, 9), photo(6, 3)}), noon + 48h)), CommitOutcome::stored);
    ASSERT_EQ(commit(at(putUp("kai", 3, 4, {note(3, "3 is still named by 6")}), noon)), CommitOutcome::stored);
    const std::pair<Instant, std::vector<std::uint64_t>> days[] = {
        {noon + graceTime - 1us, {1, 2, 3, 4, 5}},
        {noon + graceTime, {1, 2, 3, 5}},
        {noon + graceTime + 24h, {2, 3, 5}},
        {noon + graceTime * 9, {3, 5}},
    };
    for (const auto& [now, left] : days) {
        sweepAll(now);
        for (const std::uint64_t id : {1, 2, 3, 4, 5}) {
            EXPECT_EQ(hasMedia(id), std::ranges::find(left, id) != left.end()) << id << " " << left.size();
        }
    }
}

TEST_F(StoredMedia, MediaGoWithTheirCouple) {
    putMedia(1, "x");
    ASSERT_EQ(commit(putUp("kai", 0, 1, {photo(1, 1)})), CommitOutcome::stored);
    ASSERT_TRUE(store().putDevice("kai", device("d", PartnerID::a)) && store().removeDevice("kai", "d", noon));
    sweepAll(noon + graceTime - 1us);
    EXPECT_EQ(store().mediaBytes("kai"), 1U);
    sweepAll(noon + graceTime);
    ASSERT_TRUE(store().createCouple(coupleNamed("kai")));
    EXPECT_EQ(store().mediaBytes("kai"), 0U);
}

} // namespace
} // namespace lumaro
