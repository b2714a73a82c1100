// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Room/RoomHost.h"

#include "Samples/Samples.h"
#include "Tests/Fakes/ManualClock.h"
#include "Tests/Fakes/ManualStoreQueue.h"
#include "Tests/Fakes/MemoryStore.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/LumaroRoom/RoomTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using namespace room_testing;
using samples::noon;

const std::string couple = "couple";

class RecordingSockets final : public RoomSockets {
public:
    void send(SocketId socket, std::shared_ptr<const std::string> text) override {
        if (std::exchange(hasNoMemory, false)) throw std::bad_alloc{};
        lines_.push_back(numberOf(socket) + " " + lineOf(*text));
    }
    void close(SocketId socket, int code, std::string_view) override {
        lines_.push_back(numberOf(socket) + " close " + std::to_string(code));
    }
    void resume(SocketId socket) override { lines_.push_back(numberOf(socket) + " resume"); }
    /// What was said since the last time.
    Lines taken() { return std::exchange(lines_, {}); }

    bool hasNoMemory = false; ///< for the next frame

private:
    Lines lines_;
};

// A host of its own over a store that it may share.
struct Node {
    explicit Node(TransactionalStore& store) : queue(store) {}

    ManualStoreQueue queue;
    RecordingSockets sockets;
    ManualSleeper time;
    ManualClock clock{time, noon + 300us};
    RecordingLog log;
    RoomHost host{queue, sockets, clock, log};

    void say(std::uint64_t socket, std::string_view frame) { host.received(SocketId{socket}, frame); }
    Lines drained() {
        queue.drain();
        return sockets.taken();
    }
    /// Sockets 1 and 2 are A's devices and 3 is B's.
    void join(std::uint64_t socket) { host.joined(SocketId{socket}, couple, tokenOf(socket)); }
    Lines joinBoth() {
        for (const std::uint64_t socket : {1, 3}) join(socket);
        return drained();
    }
    std::optional<StoreResult<bool>> authorize(const std::string& coupleId, std::uint64_t device) {
        std::optional<StoreResult<bool>> answer;
        host.authorize(coupleId, tokenOf(device), [&](StoreResult<bool> known) { answer = known; });
        EXPECT_FALSE(answer) << "never from within the call";
        queue.drain();
        return answer;
    }
};

class RoomHostTest : public testing::Test {
protected:
    RoomHostTest() {
        EXPECT_TRUE(store_.createCouple({.coupleId = couple, .createdAt = noon, .emptySince = {}}));
        for (const auto& device : bothPaired().devices) EXPECT_TRUE(store_.putDevice(couple, device));
    }
    std::size_t storedItems() { return store_.loadRoom(couple).value()->board.items.size(); }
    void failNext(const std::string& call) {
        store_.failWhen([call, left = 1](std::string_view now) mutable { return now == call && left-- > 0; });
    }

    MemoryStore store_;
    Node node_{store_};
};

TEST_F(RoomHostTest, P30_P32_NothingIsSaidBeforeItIsDurable) {
    node_.joinBoth();
    node_.say(1, batch(1, {put(1)}));
    node_.say(3, "hb");
    node_.say(3, batch(2, {put(1)}));
    EXPECT_EQ(node_.queue.waitingCount(), 2U);
    while (node_.queue.runOne()) {
    }
    EXPECT_EQ(node_.sockets.taken(), Lines{}) << "stored, but not durable";
    node_.queue.commit();
    EXPECT_EQ(node_.sockets.taken(),
              (Lines{"1 ack 1", "3 ops 1 of a", "3 hb-ack", "3 ack 2", "3 welcome b 1 items, online ab"}));
    node_.say(3, "hb");
    EXPECT_EQ(node_.sockets.taken(), Lines{"3 hb-ack"}) << "nothing is under way";
}

TEST_F(RoomHostTest, InputsWaitWhileTheRoomIsRead) {
    node_.join(1);
    node_.say(1, batch(1, {put(1)}));
    node_.join(3);
    node_.host.left(SocketId{1});
    EXPECT_EQ(node_.sockets.taken(), Lines{});
    EXPECT_EQ(node_.drained(), (Lines{"1 welcome a 0 items, online a", "1 ack 1", "3 welcome b 1 items, online ab",
                                      "1 roster ab", "1 thread", "3 thread", "3 roster b"}));
    EXPECT_EQ(store_.lastSeen(couple)->a, noon) << "in whole milliseconds";
}

TEST_F(RoomHostTest, AStoreThatFailsClosesTheRoomAndTakesTheBatchWhenItComesAgain) {
    for (const std::string call : {"loadRoom", "commit", "commitTransaction"}) {
        Node node{store_};
        node.join(1);
        if (call != "loadRoom") node.drained();
        failNext(call);
        node.say(1, batch(1, {put(1)}));
        EXPECT_EQ(node.drained(), Lines{"1 close 1011"}) << call;
        EXPECT_EQ(node.host.figures().rooms + node.host.figures().sockets, 0U);
        EXPECT_EQ(storedItems(), 0U);
        node.say(1, "hb");
        node.host.left(SocketId{1});
        EXPECT_EQ(node.drained(), Lines{}) << "the socket is gone";
        EXPECT_EQ(node.log.lines, Lines{"room: room couple is dropped: " + call + " fails as the test wants it"});
    }
    node_.join(1);
    node_.say(1, batch(1, {put(1)}));
    EXPECT_EQ(node_.drained(), (Lines{"1 welcome a 0 items, online a", "1 ack 1"}));
}

TEST_F(RoomHostTest, ARoomThatMemoryRunsOutForIsClosedAndComesBackAsItIsStored) {
    const std::pair<const char*, std::function<void()>> calls[] = {
        {"a frame", [&] { node_.say(1, "hb"); }},
        {"a commit", [&] { node_.say(1, batch(1, {put(1)})); }},
        {"a join", [&] { node_.join(2); }},
    };
    for (const auto& [call, make] : calls) {
        node_.joinBoth();
        node_.sockets.hasNoMemory = true;
        make();
        auto lines = node_.drained();
        std::erase(lines, "2 close 1011");
        EXPECT_EQ(lines, (Lines{"1 close 1011", "3 close 1011"})) << call;
        EXPECT_EQ(node_.host.figures().rooms + node_.host.figures().sockets, 0U) << call;
    }
    EXPECT_EQ(storedItems(), 1U) << "what was stored before it was said";
    EXPECT_EQ(node_.joinBoth().front(), "1 welcome a 1 items, online a");
}

TEST_F(RoomHostTest, TokensOpenTheirOwnRoomAlone) {
    EXPECT_TRUE(**node_.authorize(couple, 1));
    EXPECT_FALSE(**node_.authorize(couple, 9));
    EXPECT_FALSE(**node_.authorize("another", 1));
    EXPECT_EQ(node_.host.figures().rooms, 1U) << "nothing is kept for those who are refused";
    node_.join(1);
    EXPECT_EQ(node_.sockets.taken(), Lines{"1 welcome a 0 items, online a"}) << "the room was here";
    EXPECT_TRUE(**node_.authorize(couple, 3));
    failNext("members");
    EXPECT_FALSE(node_.authorize(couple, 3)->has_value());
    EXPECT_EQ(node_.host.online(couple), (PartnerSet{true, false}));
}

TEST_F(RoomHostTest, RoomsThatNobodyIsInLeaveMemory) {
    EXPECT_TRUE(**node_.authorize(couple, 1));
    node_.join(1);
    for (int i = 0; i < 5; ++i) node_.host.tick();
    EXPECT_EQ(node_.host.figures().rooms, 1U);
    node_.host.left(SocketId{1});
    node_.drained();
    node_.host.tick();
    EXPECT_EQ(node_.host.figures().rooms, 1U) << "a line that broke may come back at once";
    node_.host.tick();
    EXPECT_EQ(node_.host.figures().rooms, 0U);
    EXPECT_TRUE(**node_.authorize(couple, 1));
    for (int i = 0; i < RoomHost::ticksKeptEmpty; ++i) node_.host.tick();
    EXPECT_EQ(node_.host.figures().rooms, 0U) << "the socket never came";
}

TEST_F(RoomHostTest, P8_P21_ATokenThatWasReplacedIsTurnedAwayAndItsSocketsAreClosed) {
    node_.joinBoth();
    ASSERT_TRUE(store_.putDevice(couple, {"laptop", PartnerID::a, tokenOf(11)}));
    EXPECT_TRUE(**node_.authorize(couple, 11)) << "and the room learns of it";
    EXPECT_EQ(node_.sockets.taken(), (Lines{"1 error unauthorized", "1 close 4401", "3 roster b"}));
    node_.join(11);
    EXPECT_EQ(node_.sockets.taken(), (Lines{"11 welcome a 0 items, online ab", "3 roster ab"}));
    EXPECT_TRUE(**node_.authorize(couple, 2));
    ASSERT_TRUE(store_.removeDevice(couple, "phone", noon));
    node_.host.refreshMembers(couple);
    EXPECT_EQ(node_.drained(), Lines{});
    node_.join(2);
    EXPECT_EQ(node_.sockets.taken(), (Lines{"2 error unauthorized", "2 close 4401"}));
    node_.host.refreshMembers(couple);
    failNext("members");
    EXPECT_EQ(node_.drained(), (Lines{"3 close 1011", "11 close 1011"})) << "nobody stays who may have been let go";
}

// A list of members that was read before the room itself was says nothing new, even if it is heard later.
TEST_F(RoomHostTest, AnOlderListOfMembersDoesNotTurnANewDeviceAway) {
    std::optional<bool> isAccepted;
    node_.host.authorize(couple, tokenOf(1), [&](StoreResult<bool> known) { isAccepted = known.value(); });
    node_.queue.runOne();
    ASSERT_TRUE(store_.putDevice(couple, {"new", PartnerID::b, tokenOf(12)}));
    node_.join(12);
    EXPECT_EQ(node_.drained(), Lines{"12 welcome b 0 items, online b"});
    EXPECT_TRUE(*isAccepted);
}

TEST_F(RoomHostTest, ASocketIsReadNoFurtherWhileMuchOfItWaits) {
    node_.joinBoth();
    for (std::uint64_t i = 0; i < RoomHost::maxWaitingFrames; ++i) {
        EXPECT_TRUE(node_.host.wantsMore(SocketId{1})) << i;
        node_.say(1, batch(i, {}));
    }
    EXPECT_FALSE(node_.host.wantsMore(SocketId{1}));
    EXPECT_TRUE(node_.host.wantsMore(SocketId{3}));
    node_.queue.runOne();
    node_.queue.commit();
    EXPECT_FALSE(node_.host.wantsMore(SocketId{1})) << "not for every single one";
    EXPECT_EQ(std::ranges::count(node_.drained(), "1 resume"), 1);
    node_.say(1, std::string(RoomHost::maxWaitingBytes, ' '));
    EXPECT_TRUE(node_.host.wantsMore(SocketId{1})) << "it was answered at once";
}

TEST_F(RoomHostTest, AHostMayGoWhileTheStoreWorks) {
    {
        RecordingSockets sockets;
        RoomHost host{node_.queue, sockets, node_.clock, node_.log};
        host.joined(SocketId{1}, couple, tokenOf(1));
        node_.queue.drain();
        host.received(SocketId{1}, batch(1, {put(1)}));
        host.refreshMembers(couple);
        host.authorize(couple, tokenOf(1), [](StoreResult<bool>) { FAIL() << "nobody hears this"; });
        host.left(SocketId{1});
    }
    node_.queue.drain();
    EXPECT_EQ(storedItems(), 1U);
}

} // namespace
} // namespace lumaro
