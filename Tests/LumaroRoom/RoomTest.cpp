// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Room/Room.h"

#include "LumaroRoom/Room/BoardChange.h"
#include "LumaroRoom/Store/Store.h"
#include "Samples/Samples.h"
#include "Tests/LumaroRoom/RoomTesting.h"

#include <gtest/gtest.h>

#include <map>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using namespace room_testing;
using samples::noon;
using samples::numberedId;

// Sockets 1 and 2 are A's laptop and phone, 3 is B's laptop.
class RoomTest : public testing::Test {
protected:
    Lines join(std::uint64_t socket) { return told(room_.join(SocketId{socket}, tokenOf(socket), noon)); }
    Lines leave(std::uint64_t socket) { return told(room_.leave(SocketId{socket})); }
    RoomStep say(std::uint64_t socket, std::string_view frame, Pace pace = Pace::within) {
        return room_.receive(SocketId{socket}, frame, noon + 1h, pace);
    }
    void joinAll() {
        for (const std::uint64_t socket : {1, 2, 3}) join(socket);
    }

    Room room_{"couple", {.board = {}, .version = 7, .recentBatches = {}, .members = bothPaired()}};
};

TEST_F(RoomTest, P29_P36_JoinersAreWelcomedAndTheOthersHearWhoIsOnline) {
    EXPECT_EQ(join(1), (Lines{"1 welcome a 0 items, online a"}));
    EXPECT_EQ(join(2), (Lines{"2 welcome a 0 items, online a"})) << "a second device of one person is no news";
    EXPECT_EQ(join(3), (Lines{"3 welcome b 0 items, online ab", "1 roster ab", "2 roster ab", "1 thread", "2 thread",
                              "3 thread", "commit"}));
    EXPECT_EQ(leave(1), Lines{});
    EXPECT_EQ(leave(2), Lines{"3 roster b"});
    EXPECT_EQ(leave(2), Lines{}) << "it was not here";
    EXPECT_EQ(join(1), (Lines{"1 welcome a 0 items, online ab", "3 roster ab"})) << "the thread is tied once";
    EXPECT_EQ(join(9), (Lines{"9 error unauthorized", "9 close 4401"}));
}

TEST_F(RoomTest, P30_P33_BatchesAreAckedToTheirAuthorAndRelayedToEveryOtherSocket) {
    joinAll();
    const auto step = say(1, batch(1, {put(1)}));
    EXPECT_EQ(told(step), (Lines{"1 ack 1", "2 ops 1 of a", "3 ops 1 of a", "commit"}));
    EXPECT_EQ(step.commit->batchId, numberedId(1));
    const auto& effects = step.effects;
    EXPECT_EQ(std::get<RoomEffect::Send>(effects[1].value).text, std::get<RoomEffect::Send>(effects[2].value).text)
        << "encoded once";
}

TEST_F(RoomTest, P31_P33_P34_R21_ARefusalOrASecondTakeIsFollowedByAWelcomeAndOnlyWhatAppliedIsRelayed) {
    joinAll();
    say(1, batch(1, {put(1)}));
    EXPECT_EQ(told(say(3, batch(2, {put(1), put(2)}))),
              (Lines{"3 ack 2", "3 welcome b 2 items, online ab", "1 ops 1 of b", "2 ops 1 of b", "commit"}));
    EXPECT_EQ(told(say(3, batch(3, {put(1)}))), (Lines{"3 ack 3", "3 welcome b 2 items, online ab", "commit"}))
        << "taken, so that it is never asked again";
    EXPECT_EQ(told(say(1, batch(1, {put(1)}))), (Lines{"1 ack 1", "1 welcome a 2 items, online ab"}));
    for (std::uint64_t i = 100; i < 100 + recentBatchCount - 2; ++i) say(1, batch(i, {}));
    EXPECT_FALSE(say(3, batch(2, {})).commit) << "the oldest that is still known";
    EXPECT_TRUE(say(1, batch(1, {})).commit) << "memory is bounded: now the store has to know";
}

TEST_F(RoomTest, P20_P27_P35_FramesThatAreNoBatchesAreAnsweredByWhatIsWrongWithThem) {
    joinAll();
    const std::map<std::string, Lines> cases{
        {"hb", {"1 hb-ack"}},
        {"hb-ack", {}},
        {"hb ", {"1 error bad_message"}},
        {R"({"type":"dance"})", {"1 error bad_message"}},
        {R"({"type":"ops","batchId":"x","ops":[]})", {"1 error bad_message"}},
        {batch(5, std::vector<Op>(101, takeDown(1))), {"1 error limit_exceeded", "1 ack 5"}},
        {std::string(maxFrameBytes + 1, ' '), {"1 error limit_exceeded"}},
    };
    for (const auto& [frame, expected] : cases) EXPECT_EQ(told(say(1, frame)), expected) << frame.substr(0, 40);
    EXPECT_EQ(told(say(9, "hb")), Lines{}) << "not here";
    EXPECT_TRUE(say(1, batch(5, {put(1)})).commit) << "a batch that never took effect is not remembered";
}

TEST_F(RoomTest, P29_P36_PresenceGoesToThePartnerAndWaitsForOneWhoComesLater) {
    join(1);
    EXPECT_EQ(told(say(1, presence(Activity::editing))), Lines{});
    EXPECT_EQ(join(3)[1], "3 presence of a editing");
    join(2);
    EXPECT_EQ(told(say(1, presence(Activity::idle))), Lines{"3 presence of a idle"});
    EXPECT_EQ(told(say(1, presence(Activity::editing), Pace::over)), Lines{});
    EXPECT_EQ(told(say(1, "hb", Pace::over)), Lines{"1 hb-ack"});
    leave(3);
    EXPECT_EQ(join(3)[1], "3 presence of a idle");
    room_.join(SocketId{11}, tokenOf(1), noon);
    EXPECT_EQ(told(say(1, presence(Activity::editing))), Lines{}) << "the device has come back on another line";
    EXPECT_EQ(told(say(11, presence(Activity::editing))), Lines{"3 presence of a editing"});
    leave(11);
    for (const std::uint64_t socket : {1, 2, 3}) leave(socket);
    EXPECT_EQ(join(3), Lines{"3 welcome b 0 items, online b"}) << "presence is of those who are here";
}

TEST_F(RoomTest, P21_DevicesThatAreNoLongerOnTheBoardAreToldAndClosed) {
    joinAll();
    EXPECT_EQ(told(room_.membersChanged(bothPaired())), Lines{}) << "nothing changed";
    auto members = bothPaired();
    members.names.b = "Bo";
    members.devices[1].token = tokenOf(22);
    EXPECT_EQ(told(room_.membersChanged(members)),
              (Lines{"2 error unauthorized", "2 close 4401", "1 roster ab", "3 roster ab"}));
    EXPECT_EQ(told(say(2, batch(1, {put(1)}))), Lines{}) << "it is not heard any more";
    std::erase_if(members.devices, [](const auto& device) { return device.slot == PartnerID::b; });
    EXPECT_EQ(told(room_.membersChanged(members)), (Lines{"3 error unauthorized", "3 close 4401", "1 roster a"}));
}

TEST_F(RoomTest, ARoomThatTakesOverSocketsWelcomesThemAnew) {
    const std::vector<Room::Seat> seats{
        {SocketId{1}, tokenOf(1)}, {SocketId{9}, tokenOf(9)}, {SocketId{3}, tokenOf(3)}};
    const auto text = std::make_shared<const std::string>(R"({"type":"presence","from":"a","activity":"idle"})");
    EXPECT_EQ(told(room_.resume(seats, {text, nullptr}, noon)),
              (Lines{"9 error unauthorized", "9 close 4401", "1 welcome a 0 items, online ab",
                     "3 welcome b 0 items, online ab", "3 presence of a idle", "1 thread", "3 thread", "commit"}));
}

TEST_F(RoomTest, AResidentRoomRestsAndWakesAsItWas) {
    joinAll();
    say(1, batch(1, {put(1), put(2), takeDown(2)}));
    const auto board = room_.board();
    room_.rest();
    EXPECT_EQ(told(room_.receive(SocketId{1}, "hb", noon)), Lines{"1 hb-ack"});
    leave(2);
    EXPECT_EQ(join(2), Lines{"2 welcome a 1 items, online ab"});
    EXPECT_TRUE(room_.isResting()) << "none of these needs the board";
    EXPECT_EQ(room_.board(), board);
    room_.rest();
    EXPECT_EQ(say(3, batch(2, {put(2, noon - 1h)})).tally.rejectedOps, 1U) << "tombstones wake too";
}

TEST(BoardChange, NamesOnlyWhatTheBatchTouched) {
    auto board = samples::fullBoard();
    const auto id = board.items[7].id;
    auto version = board.items[3];
    version.updatedAt += 1h;
    auto change = applyBatch(std::vector<Op>{{Upsert{version}}, {Delete{id, noon + 1h}}}, board, noon).change;
    EXPECT_EQ(change.upserted, std::vector{version});
    EXPECT_EQ(change.removed, std::vector{id});
    EXPECT_EQ(change.buried, (std::vector<Tombstone>{{id, noon + 1h}}));
    EXPECT_TRUE(change.unburied.empty());
    version.id = id;
    version.updatedAt = noon + 2h;
    change = applyBatch(std::vector<Op>{{Upsert{version}}}, board, noon).change;
    EXPECT_EQ(change.unburied, std::vector{id});
    EXPECT_TRUE(change.removed.empty() && change.buried.empty());
}

} // namespace
} // namespace lumaro
