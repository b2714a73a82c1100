// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtMailbox.h"

#include "Tests/Platform/Qt/QtTest.h"

#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

using QtMailboxTest = QtTest;

TEST_F(QtMailboxTest, CallsFromManyThreadsComeToPassOnItsOwnEachThreadsInItsOrder) {
    constexpr std::size_t threads = 4;
    constexpr int each = 2500;
    QtMailbox box;
    const auto home = std::this_thread::get_id();
    // Without a lock: that calls do not meet is for the thread sanitizer to see.
    std::vector<std::vector<int>> heard(threads);
    std::size_t elsewhere = 0;
    std::size_t done = 0;
    {
        std::vector<std::jthread> posters;
        for (std::size_t from = 0; from < threads; ++from) {
            posters.emplace_back([&, from] {
                for (int i = 0; i < each; ++i) {
                    box.post([&, from, i, kept = std::make_unique<int>(i)] {
                        elsewhere += std::this_thread::get_id() == home ? 0 : 1;
                        heard[from].push_back(*kept);
                        ++done;
                    });
                }
            });
        }
        waitUntil([&] { return done == threads * each; });
    }
    EXPECT_EQ(elsewhere, 0U);
    for (const auto& one : heard) {
        EXPECT_EQ(one.size(), static_cast<std::size_t>(each));
        EXPECT_TRUE(std::ranges::is_sorted(one));
    }
}

TEST_F(QtMailboxTest, ACallThatAlwaysPostsAnotherLeavesOthersTheirTurn) {
    QtMailbox box;
    int calls = 0;
    std::function<void()> again = [&] {
        ++calls;
        box.post(again);
    };
    box.post(again);
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, &other, [&] { ++turns; });
    other.start(0);
    waitUntil([&] { return turns >= 3; });
    EXPECT_GT(calls, 0);
}

TEST_F(QtMailboxTest, EmptyDoesWhatWaitsAndWhatThatPosts) {
    QtMailbox box;
    std::vector<int> heard;
    std::jthread{[&] {
        box.post([&] {
            heard.push_back(1);
            box.post([&] { heard.push_back(3); });
        });
        box.post([&] { heard.push_back(2); });
    }}.join();
    EXPECT_TRUE(heard.empty());
    box.empty();
    EXPECT_EQ(heard, (std::vector{1, 2, 3}));
    settle();
    EXPECT_EQ(heard.size(), 3U);
}

TEST_F(QtMailboxTest, WhatWaitsWhenTheBoxGoesIsNeverDoneAndHoldsNothing) {
    auto held = std::make_shared<int>(0);
    {
        QtMailbox box;
        std::jthread{[&] {
            for (int i = 0; i < 100; ++i) box.post([held] { ++*held; });
        }}.join();
    }
    settle();
    EXPECT_EQ(*held, 0);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(QtMailboxTest, ACallMayDestroyTheBox) {
    for (const bool atOnce : {false, true}) {
        std::optional<QtMailbox> box{std::in_place};
        int later = 0;
        box->post([&] { box->post([&] { box.reset(); }); });
        // The innermost of calls within calls.
        box->post([&] { box->empty(); });
        box->post([&] { ++later; });
        box->post([&, atOnce] { later += atOnce ? 1 : 0; });
        if (atOnce) {
            box->empty();
        } else {
            waitUntil([&] { return !box; });
        }
        settle();
        EXPECT_FALSE(box);
        EXPECT_EQ(later, atOnce ? 2 : 1);
    }
}

} // namespace
} // namespace lumaro
