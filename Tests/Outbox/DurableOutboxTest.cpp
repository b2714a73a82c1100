// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Outbox/DurableOutbox.h"

#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/MemoryFileSystem.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace lumaro {
namespace {

using samples::noon;
using samples::numberedId;

const std::string folder = "/home/bo/outbox/couple";

std::vector<Op> painted() {
    return {{SetBackground{BackgroundID::sage}}};
}

class DurableOutboxTest : public testing::Test {
protected:
    DurableOutbox open(FileSystem& files) { return DurableOutbox::open(files, ids_, folder).value(); }
    DurableOutbox open() { return open(disk_); }
    std::vector<std::int64_t> sequences(const DurableOutbox& outbox) {
        std::vector<std::int64_t> found;
        for (const auto& batch : outbox.pending()) found.push_back(batch.sequence);
        return found;
    }
    void put(const std::string& name, const std::string& bytes) {
        ASSERT_TRUE(disk_.createDirectories(folder));
        ASSERT_TRUE(disk_.writeFile(folder + "/" + name, bytes));
    }
    void putBatch(std::int64_t sequence) {
        const OutboxBatch batch{numberedId(static_cast<std::uint64_t>(sequence)), painted(), noon, sequence};
        put(batch.fileName(), Wire::encode(batch).value());
    }

    MemoryFileSystem disk_;
    CountingUUIDs ids_{1000};
};

TEST_F(DurableOutboxTest, O1_O2_WritesAFileThatScriptsCanRead) {
    auto outbox = open();
    EXPECT_EQ(outbox.nextSequence(), 0);
    ASSERT_TRUE(outbox.append(painted(), *UUID::parse("0abcdef0-0000-4000-8000-00000000000f"), noon));
    EXPECT_EQ(disk_.readFile(folder + "/000000000000-0abcdef0-0000-4000-8000-00000000000f.json"),
              R"({"batchId":"0ABCDEF0-0000-4000-8000-00000000000F","ops":[{"op":"setBackground","background":"sage"}],)"
              R"("createdAt":1777636800000,"sequence":0})");
    EXPECT_EQ((OutboxBatch{{}, {}, {}, 42}.fileName()), "000000000042-00000000-0000-0000-0000-000000000000.json");
}

TEST_F(DurableOutboxTest, O5_LoadsInTheOrderOfSequencesAndGoesOnAboveTheLargest) {
    for (const auto sequence : {std::int64_t{7}, std::int64_t{3}, std::int64_t{1000000000000}}) putBatch(sequence);
    auto outbox = open();
    EXPECT_EQ(sequences(outbox), (std::vector<std::int64_t>{3, 7, 1000000000000}));
    EXPECT_EQ(outbox.append(painted(), numberedId(1), noon)->sequence, 1000000000001);
}

TEST_F(DurableOutboxTest, O6_O8_SequencesEndWithoutOverflow) {
    constexpr auto end = DurableOutbox::endOfSequences;
    putBatch(end);
    auto outbox = open();
    EXPECT_EQ(outbox.lostFiles(), 1U) << "nothing could come behind it";
    EXPECT_EQ(outbox.append(painted(), numberedId(1), noon)->sequence, 0);
    putBatch(end - 2);
    EXPECT_TRUE(outbox.reload());
    EXPECT_EQ(outbox.append(painted(), numberedId(2), noon)->sequence, end - 1);
    for (std::uint64_t refused = 3; refused < 5; ++refused)
        EXPECT_FALSE(outbox.append(painted(), numberedId(refused), noon));
    EXPECT_EQ(sequences(open()), (std::vector<std::int64_t>{0, end - 2, end - 1}));
}

TEST_F(DurableOutboxTest, O5_O6_ABadFileCostsOnlyItself) {
    for (const auto sequence : {1, 2, 3}) putBatch(sequence);
    put("000000000009-cut.json", R"({"batchId":"0ABC)");
    put(".left-over.tmp", "half a bat");
    put("notes.txt", "not ours");
    const auto outbox = open();
    EXPECT_EQ(sequences(outbox), (std::vector<std::int64_t>{1, 2, 3}));
    EXPECT_EQ(outbox.lostFiles(), 1U);
    EXPECT_EQ(disk_.listFiles(folder)->size(), 5U);
}

TEST_F(DurableOutboxTest, O7_AckedBatchesAreGoneAndUnknownAcksHarmless) {
    auto outbox = open();
    for (std::uint64_t i = 1; i <= 3; ++i) ASSERT_TRUE(outbox.append(painted(), numberedId(i), noon));
    EXPECT_TRUE(outbox.markAcked(numberedId(9)));
    EXPECT_TRUE(outbox.markAcked(numberedId(2)));
    EXPECT_FALSE(outbox.contains(numberedId(2)));
    EXPECT_EQ(sequences(open()), (std::vector<std::int64_t>{0, 2}));
    ASSERT_TRUE(disk_.removeFile(folder + "/" + outbox.pending().front().fileName()));
    EXPECT_TRUE(outbox.removeAll());
    EXPECT_TRUE(outbox.isEmpty() && open().isEmpty());
}

// Every call of an append fails once, for every fault: the outbox is as it was, now and after a restart.
TEST_F(DurableOutboxTest, O4_ARefusedBatchLeavesNoTrace) {
    for (const auto fault : {FileFault::noSpace, FileFault::denied, FileFault::inOut}) {
        for (int failing = 0; failing < 4; ++failing) {
            MemoryFileSystem disk;
            int calls = 0;
            bool isArmed = false;
            disk.fault = [&](std::string_view call) {
                const bool fails = isArmed && call != "removeFile" && calls++ == failing;
                return fails ? std::optional{fault} : std::nullopt;
            };
            auto outbox = open(disk);
            ASSERT_TRUE(outbox.append(painted(), numberedId(1), noon));
            isArmed = true;
            const auto refused = outbox.append(painted(), numberedId(2), noon);
            ASSERT_FALSE(refused) << failing;
            EXPECT_EQ(std::get<FileError>(refused.error()).fault, fault);
            EXPECT_EQ(outbox.count(), 1U);
            EXPECT_EQ(disk.listFiles(folder)->size(), 1U) << failing;
            EXPECT_EQ(outbox.append(painted(), numberedId(3), noon)->sequence, 2) << "numbers are never used twice";
            EXPECT_EQ(sequences(open(disk)), (std::vector<std::int64_t>{0, 2}));
        }
    }
}

struct PowerLoss {};

// Against a plain map, with the power going at any call of the file system: what was accepted is there afterwards,
// once; what was acknowledged may come back, but nothing else does.
TEST_F(DurableOutboxTest, O3_WhatWasAcceptedSurvivesThePowerGoingAtAnyCall) {
    samples::Random random{8};
    std::size_t losses = 0;
    for (int round = 0; round < 400; ++round) {
        MemoryFileSystem disk;
        int untilLoss = samples::pick(random, 3, 60);
        disk.fault = [&](std::string_view) -> std::optional<FileFault> {
            if (untilLoss-- == 0) throw PowerLoss{};
            return std::nullopt;
        };
        std::map<UUID, std::int64_t> accepted;
        std::set<UUID> optional; // in doubt when the power went, or acknowledged
        try {
            auto outbox = open(disk);
            for (std::uint64_t i = 1; i <= 15; ++i) {
                optional.insert(numberedId(i));
                accepted[numberedId(i)] = outbox.append(painted(), numberedId(i), noon)->sequence;
                optional.erase(numberedId(i));
                if (!samples::chance(random, 0.4)) continue;
                const auto acked = accepted.begin()->first;
                optional.insert(acked);
                accepted.erase(acked);
                ASSERT_TRUE(outbox.markAcked(acked));
            }
        } catch (const PowerLoss&) {
            ++losses;
        }
        disk.fault = nullptr;
        disk.crash(samples::pick(random, std::size_t{0}, std::size_t{40}));
        std::map<UUID, std::int64_t> found;
        const auto outbox = open(disk);
        for (const auto& batch : outbox.pending()) {
            ASSERT_TRUE(found.emplace(batch.batchId, batch.sequence).second) << "twice";
        }
        for (const auto& [id, sequence] : accepted) ASSERT_EQ(found.at(id), sequence) << round;
        for (const auto& [id, sequence] : found) ASSERT_TRUE(accepted.contains(id) || optional.contains(id)) << round;
    }
    EXPECT_GT(losses, 200U);
}

} // namespace
} // namespace lumaro
