// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/BoardStore.h"

#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"
#include "Tests/Model/StorageFixture.h"

#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

const std::string folder = "/home/bo/boards";
const std::string path = folder + "/abc.json";

Board board(BackgroundID paper) {
    Board made = samples::typicalBoard();
    made.background = paper;
    return made;
}
const Board oat = board(BackgroundID::oat);
const Board sage = board(BackgroundID::sage);
const Board butter = board(BackgroundID::butter);

class BoardStoreTest : public StorageFixture {
protected:
    void start() { store_.emplace(folder, BoardStore::Ports{disk_, sleeper_, background_, log_}); }
    void restartWithoutPower() {
        store_.reset();
        background_.runAll();
        disk_.crash();
        disk_.fault = nullptr;
        start();
    }

    std::optional<BoardStore> store_;
};

TEST_F(BoardStoreTest, TheNewestIsWrittenAndNoneWhileOneIsUnderWay) {
    start();
    for (const auto* changed : {&oat, &sage}) store_->save("abc", *changed);
    sleeper_.advance(249ms);
    EXPECT_EQ(background_.waiting(), 0U);
    sleeper_.advance(1ms);
    for (const auto* changed : {&oat, &butter}) store_->save("abc", *changed);
    sleeper_.advance(1h);
    EXPECT_EQ(background_.waiting(), 1U) << "the first is not done yet";
    background_.runAll();
    EXPECT_EQ(disk_.readFile(path), Wire::encode(sage).value());
    sleeper_.advance(250ms);
    background_.runAll();
    EXPECT_EQ(disk_.readFile(path), Wire::encode(butter).value());
    EXPECT_EQ(sleeper_.waiting(), 0U) << "a store at rest waits for nothing";
}

TEST_F(BoardStoreTest, WhatIsNotWrittenYetIsKnownAndWrittenAtTheEnd) {
    for (const bool isUnderWay : {false, true}) {
        start();
        store_->save("abc", oat);
        if (isUnderWay) sleeper_.advance(250ms);
        EXPECT_EQ(store_->load("abc"), oat);
        store_->save("abc", sage);
        store_->save("xyz", butter);
        EXPECT_EQ(store_->load("abc"), sage);
        restartWithoutPower();
        EXPECT_EQ(store_->load("abc"), sage) << isUnderWay;
        EXPECT_EQ(store_->load("xyz"), butter) << isUnderWay;
        EXPECT_EQ(store_->load("other"), std::nullopt);
    }
    EXPECT_TRUE(log_.lines.empty());
}

TEST_F(BoardStoreTest, WhatIsNoBoardIsSetAsideAndWhatCannotBeReadStays) {
    start();
    ASSERT_TRUE(disk_.createDirectories(folder));
    for (const auto& bytes : {std::string{}, std::string{"{\"v\":1"}, Wire::encode(oat).value() + "x"}) {
        ASSERT_TRUE(disk_.writeFile(path, bytes));
        EXPECT_EQ(store_->load("abc"), std::nullopt);
        EXPECT_EQ(disk_.readFile(path + ".corrupt"), bytes);
        EXPECT_EQ(disk_.listFiles(folder)->size(), 1U);
        EXPECT_TRUE(log_.lines.back().starts_with("store: the board snapshot is damaged at $")) << log_.lines.back();
    }
    ASSERT_TRUE(disk_.writeFile(path, Wire::encode(sage).value()));
    failAt("readFile", FileFault::inOut);
    EXPECT_EQ(store_->load("abc"), std::nullopt);
    EXPECT_TRUE(log_.lines.back().starts_with("store: the board snapshot cannot be read")) << log_.lines.back();
    disk_.fault = nullptr;
    EXPECT_EQ(store_->load("abc"), sage);
}

TEST_F(BoardStoreTest, AFullDiskIsToldOnceAndTheNextChangeOrTheEndTriesAgain) {
    start();
    const auto change = [this](const Board& to) {
        store_->save("abc", to);
        sleeper_.advance(1h);
        background_.runAll();
        EXPECT_EQ(sleeper_.waiting(), 0U) << "a full disk is left alone until there is something new";
        return log_.lines.size();
    };
    failAt("writeFile", FileFault::noSpace);
    EXPECT_EQ(change(oat), 1U);
    EXPECT_EQ(change(sage), 1U);
    EXPECT_EQ(disk_.listFiles(folder)->size(), 0U) << "nothing half written takes up room";
    disk_.fault = nullptr;
    EXPECT_EQ(change(butter), 1U);
    failAt("syncFile", FileFault::noSpace);
    EXPECT_EQ(change(oat), 2U);
    disk_.fault = nullptr;
    restartWithoutPower();
    EXPECT_EQ(store_->load("abc"), oat);
    store_->save("abc", sage);
    sleeper_.advance(250ms);
    disk_.fault = [isFull = true](std::string_view) mutable {
        return std::exchange(isFull, false) ? std::optional{FileFault::noSpace} : std::nullopt;
    };
    restartWithoutPower();
    EXPECT_EQ(store_->load("abc"), sage) << "also for what was under way at the end";
}

TEST_F(BoardStoreTest, AWriteThatIsCutShortAnywhereLeavesTheOldBoard) {
    for (int calls = 0; calls <= 5; ++calls) {
        start();
        store_->save("abc", oat);
        restartWithoutPower();
        endAfter(calls);
        store_->save("abc", sage);
        restartWithoutPower();
        EXPECT_EQ(store_->load("abc"), calls < 5 ? oat : sage) << calls;
    }
}

} // namespace
} // namespace lumaro
