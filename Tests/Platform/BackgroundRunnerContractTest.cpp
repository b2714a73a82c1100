// SPDX-License-Identifier: Apache-2.0
// What every BackgroundRunner promises, held by the one with a thread and by the one that the test steps.
#include "Platform/Qt/QtBackgroundRunner.h"
#include "Tests/Fakes/ManualBackground.h"
#include "Tests/Platform/Qt/QtTest.h"

#include <atomic>
#include <optional>
#include <semaphore>
#include <thread>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

template <class Runner>
class BackgroundRunnerContract : public QtTest {
protected:
    using Task = std::unique_ptr<BackgroundRunner::Task>;

    // Until what was handed over before has been done, and has come back where it could.
    void finish() {
        bool isLast = false;
        const auto last = runner_->run([] {}, [&] { isLast = true; });
        waitUntil([&] {
            if (auto* const manual = dynamic_cast<ManualBackground*>(runner_.get())) manual->runAll();
            return isLast;
        });
    }

    std::unique_ptr<BackgroundRunner> runner_ = std::make_unique<Runner>();
};

using Runners = testing::Types<ManualBackground, QtBackgroundRunner>;
TYPED_TEST_SUITE(BackgroundRunnerContract, Runners);

TYPED_TEST(BackgroundRunnerContract, WorksInOrderAndComesBackToTheCallersThread) {
    std::vector<int> worked;
    std::vector<int> cameBack;
    std::vector<typename TestFixture::Task> tasks;
    for (int i = 0; i < 5; ++i) {
        tasks.push_back(inBackground(
            *this->runner_,
            [&worked, i] {
                worked.push_back(i);
                return i;
            },
            [&, caller = std::this_thread::get_id()](int result) {
                EXPECT_EQ(std::this_thread::get_id(), caller);
                cameBack.push_back(result);
            }));
        EXPECT_TRUE(cameBack.empty());
    }
    this->finish();
    EXPECT_EQ(worked, (std::vector{0, 1, 2, 3, 4}));
    EXPECT_EQ(cameBack, worked);
}

TYPED_TEST(BackgroundRunnerContract, ADroppedTaskIsDoneAndSaysNothing) {
    std::atomic<int> worked = 0;
    bool saidSomething = false;
    typename TestFixture::Task kept;
    for (int i = 0; i < 50; ++i) {
        kept = this->runner_->run([&] { ++worked; }, [&] { saidSomething = true; });
    }
    kept.reset();
    this->finish();
    EXPECT_EQ(worked, 50);
    EXPECT_FALSE(saidSomething);
}

TYPED_TEST(BackgroundRunnerContract, ThenMayDropItsTaskAndFindsWhatTheWorkHeldGone) {
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    std::optional<bool> isGone;
    typename TestFixture::Task task;
    task = this->runner_->run([held = std::exchange(held, nullptr)] { EXPECT_EQ(*held, 1); },
                              [&] {
                                  task.reset();
                                  isGone = watched.expired();
                              });
    this->finish();
    EXPECT_EQ(isGone, true);
}

TEST(QtBackgroundRunner, WorksElsewhereAndFinishesBeforeItGoes) {
    std::atomic<bool> isDone = false;
    std::thread::id worker;
    std::unique_ptr<BackgroundRunner::Task> task;
    {
        QtBackgroundRunner runner;
        std::binary_semaphore handedOver{0};
        task = runner.run(
            [&] {
                handedOver.acquire();
                worker = std::this_thread::get_id();
                isDone = true;
            },
            [] {});
        handedOver.release();
    }
    EXPECT_TRUE(isDone);
    EXPECT_NE(worker, std::this_thread::get_id());
}

} // namespace
} // namespace lumaro
