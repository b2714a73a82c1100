// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Store/StoreThread.h"

#include "Tests/Fakes/MemoryStore.h"
#include "Tests/LumaroRoom/StoreFixture.h"

#include <future>
#include <semaphore>
#include <thread>

namespace lumaro {
namespace {

/// A submitter's thread: what is posted to it runs when the test says so.
class Loop {
public:
    StoreThread::Post post() {
        return [this](std::move_only_function<void()> function) {
            const std::scoped_lock lock{mutex_};
            posted_.push_back(std::move(function));
            arrived_.release();
        };
    }
    /// Waits for the next post and runs it.
    void runOne() {
        arrived_.acquire();
        std::unique_lock lock{mutex_};
        auto function = std::move(posted_.front());
        posted_.erase(posted_.begin());
        lock.unlock();
        function();
    }
    std::size_t waiting() {
        const std::scoped_lock lock{mutex_};
        return posted_.size();
    }

private:
    std::mutex mutex_;
    std::vector<std::move_only_function<void()>> posted_;
    std::counting_semaphore<> arrived_{0};
};

class StoreThreadTest : public testing::Test {
protected:
    // Keeps the store's thread busy until it is told to go on, so that what is submitted meanwhile shares a
    // transaction.
    std::promise<void> hold() {
        std::promise<void> goOn;
        std::promise<void> held;
        auto isHeld = held.get_future();
        queue_->submit(
            [until = goOn.get_future().share(), held = std::move(held)](Store&) mutable {
                held.set_value();
                until.wait();
                return StoreResult<void>{};
            },
            [](const StoreResult<void>&) {});
        isHeld.wait();
        return goOn;
    }
    // Creates a couple, and tells of it under its name.
    void create(const std::string& id) {
        queue_->submit([id](Store& store) { return store.createCouple(coupleNamed(id)); },
                       [this, id](const StoreResult<void>& result) { told_.emplace_back(id, result.has_value()); });
    }

    MemoryStore* store_ = new MemoryStore;
    StoreThread thread_{std::unique_ptr<TransactionalStore>{store_}, 8};
    Loop loop_;
    std::unique_ptr<StoreQueue> queue_ = thread_.queueFor(loop_.post());
    std::vector<std::pair<std::string, bool>> told_;
};

using Told = std::vector<std::pair<std::string, bool>>;

TEST_F(StoreThreadTest, WhatWaitsTogetherIsOneTransactionToldInOneGo) {
    auto goOn = hold();
    for (const auto* id : {"a", "b", "c", "d", "e", "f", "g", "h", "i"}) create(id);
    goOn.set_value();
    loop_.runOne();
    loop_.runOne();
    EXPECT_EQ(told_.size(), 8U) << "as many as a transaction takes";
    loop_.runOne();
    EXPECT_EQ(told_.back(), std::pair(std::string{"i"}, true));
    thread_.stop();
    EXPECT_EQ(thread_.figures().transactions, 3U);
    EXPECT_EQ(thread_.figures().works, 10U);
}

TEST_F(StoreThreadTest, AFaultyWorkFailsAlone) {
    auto goOn = hold();
    for (const auto* id : {"a", "b", "a", "c"}) create(id);
    goOn.set_value();
    loop_.runOne();
    loop_.runOne();
    EXPECT_EQ(told_, (Told{{"a", true}, {"b", true}, {"a", false}, {"c", true}}));
    EXPECT_EQ(thread_.figures().failures, 1U);
}

TEST_F(StoreThreadTest, AWorkIsToldToHaveFailedWhenItsCommitDoes) {
    auto goOn = hold();
    int commits = 0;
    // That of both together, and then that of the first by itself; the one before them is the held work's.
    store_->failWhen(
        [&](std::string_view call) { return call == "commitTransaction" && (++commits == 2 || commits == 3); });
    bool isUndone = false;
    bool knewOfIt = false;
    queue_->submit([](Store& store) { return store.createCouple(coupleNamed("a")); },
                   [this](const StoreResult<void>& result) { told_.emplace_back("a", result.has_value()); },
                   [&] { isUndone = true; });
    queue_->submit([&](Store&) { return knewOfIt = isUndone, StoreResult<void>{}; }, [](const StoreResult<void>&) {});
    create("b");
    goOn.set_value();
    loop_.runOne();
    loop_.runOne();
    EXPECT_EQ(told_, (Told{{"a", false}, {"b", true}}));
    EXPECT_TRUE(knewOfIt) << "before anything that was submitted later ran";
    create("a");
    loop_.runOne();
    EXPECT_EQ(told_.back(), std::pair(std::string{"a"}, true)) << "it had left nothing";
}

TEST_F(StoreThreadTest, StoppingDoesWhatWaitsAndRefusesWhatComesLater) {
    auto goOn = hold();
    for (const auto* id : {"a", "b"}) create(id);
    std::jthread stopping{[this] { thread_.stop(); }};
    goOn.set_value();
    stopping.join();
    create("late");
    EXPECT_TRUE(told_.empty()) << "nothing is told from within a call";
    while (loop_.waiting() > 0) loop_.runOne();
    EXPECT_EQ(told_, (Told{{"a", true}, {"b", true}, {"late", false}}));
}

} // namespace
} // namespace lumaro
