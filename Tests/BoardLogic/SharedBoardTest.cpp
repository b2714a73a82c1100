// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/SharedBoard.h"

#include "Samples/Samples.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <set>
#include <variant>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::noon;
using samples::numberedId;

// The room's messages, as far as they concern the board; each with the room's board once it was sent.
struct Acked {
    UUID batchId;
};
struct Relayed {
    std::vector<Op> ops;
};
struct Welcomed {
    Board board;
};
struct Message {
    std::variant<Acked, Relayed, Welcomed> content;
    Board room;
};

struct Device {
    SharedBoard board;
    std::deque<PendingBatch> toRoom;
    std::deque<Message> fromRoom;
};

// What people see and what the last writer decides on; a board's own instant and old tombstones may differ.
void expectSame(const Board& one, const Board& other) {
    EXPECT_EQ(one.items, other.items);
    EXPECT_EQ(one.background, other.background);
    EXPECT_EQ(one.threadTiedAt, other.threadTiedAt);
}

// Two devices and a room that keeps its promises, under messages that take any time but keep their order.
class Couple {
public:
    explicit Couple(std::uint64_t seed) : random_(seed), room_(samples::anyBoard(random_, 6)) {
        for (auto& device : devices_) device.board = SharedBoard{room_, {}, noon};
    }

    void step() {
        auto& device = devices_[samples::pick(random_, std::size_t{0}, std::size_t{1})];
        switch (samples::pick(random_, 0, 5)) {
        case 0: edit(device); break;
        case 1:
        case 2: receiveInRoom(device); break;
        case 3:
        case 4: receive(device); break;
        default:
            if (samples::chance(random_, 0.1)) reconnect(device);
        }
    }

    void settle() {
        for (auto& device : devices_) {
            while (!device.toRoom.empty()) receiveInRoom(device);
        }
        for (auto& device : devices_) {
            while (!device.fromRoom.empty()) receive(device);
            EXPECT_TRUE(device.board.pending().empty());
            expectSame(device.board.shown(), room_);
            expectSame(device.board.confirmed(), room_);
        }
    }

    std::size_t refusals = 0;
    std::size_t repeats = 0;

private:
    void edit(Device& device) {
        PendingBatch batch{numberedId(random_()), {}};
        for (int i = samples::pick(random_, 1, 4); i > 0; --i) batch.ops.push_back(samples::anyOp(random_, 9));
        device.board.enqueue(batch, noon);
        device.toRoom.push_back(std::move(batch));
    }

    // What was on its way either way is lost; the room sends its board, the device all that waits.
    void reconnect(Device& device) {
        device.fromRoom.assign(1, {Welcomed{room_}, room_});
        device.toRoom = device.board.pending();
    }

    void receiveInRoom(Device& device) {
        if (device.toRoom.empty()) return;
        const auto batch = device.toRoom.front();
        device.toRoom.pop_front();
        if (!taken_.insert(batch.batchId).second) {
            device.fromRoom.push_back({Acked{batch.batchId}, room_});
            device.fromRoom.push_back({Welcomed{room_}, room_});
            ++repeats;
            return;
        }
        const auto result = BoardLogic::apply(batch.ops, room_, noon);
        room_ = result.board;
        device.fromRoom.push_back({Acked{batch.batchId}, room_});
        if (!result.rejected.empty()) device.fromRoom.push_back({Welcomed{room_}, room_});
        refusals += result.rejected.size();
        auto& partner = &device == devices_.data() ? devices_[1] : devices_[0];
        if (!result.applied.empty()) partner.fromRoom.push_back({Relayed{result.applied}, room_});
    }

    static void receive(Device& device) {
        if (device.fromRoom.empty()) return;
        const auto message = device.fromRoom.front();
        device.fromRoom.pop_front();
        bool isCorrected = false;
        if (const auto* acked = std::get_if<Acked>(&message.content)) {
            device.board.acked(acked->batchId, noon);
            isCorrected = !device.fromRoom.empty() && std::holds_alternative<Welcomed>(device.fromRoom.front().content);
        } else if (const auto* relayed = std::get_if<Relayed>(&message.content)) {
            device.board.applyRemote(relayed->ops, noon);
        } else {
            device.board.welcome(std::get<Welcomed>(message.content).board, noon);
        }
        if (!isCorrected) expectSame(device.board.confirmed(), message.room);
        expectProjected(device.board);
    }

    // However it got there, `shown` is `confirmed` with what waits over it.
    static void expectProjected(const SharedBoard& board) {
        const std::vector<PendingBatch> pending{board.pending().begin(), board.pending().end()};
        expectSame(board.shown(), SharedBoard(board.confirmed(), pending, noon).shown());
    }

    samples::Random random_;
    Board room_;
    std::set<UUID> taken_;
    std::array<Device, 2> devices_;
};

TEST(SharedBoard, R20_R21_HoldsTheRoomsBoardAtEveryMessageAndShowsItAtRest) {
    std::size_t refusals = 0;
    std::size_t repeats = 0;
    for (std::uint64_t seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        Couple couple{seed};
        for (int i = 0; i < 150; ++i) couple.step();
        couple.settle();
        if (HasFailure()) return;
        refusals += couple.refusals;
        repeats += couple.repeats;
    }
    // Otherwise nothing clashed, or no line was cut between a commit and its ack.
    EXPECT_GT(refusals, 1000U);
    EXPECT_GT(repeats, 50U);
}

TEST(SharedBoard, R18_R19_WhatWaitsStaysOnScreenThroughAWelcomeAndARestart) {
    const Board room;
    BoardItem item;
    item.id = numberedId(1);
    const PendingBatch batch{numberedId(7), {{Upsert{item}}}};
    SharedBoard board{room, {}, noon};
    EXPECT_TRUE(board.enqueue(batch, noon).empty());
    board.welcome(room, noon);
    EXPECT_EQ(board.shown().items.size(), 1U);
    EXPECT_TRUE(board.confirmed().items.empty());
    EXPECT_EQ(SharedBoard(room, {batch}, noon).shown(), board.shown());
    board.acked(numberedId(8), noon);
    EXPECT_EQ(board.pending().size(), 1U);
    board.acked(batch.batchId, noon);
    EXPECT_EQ(board.confirmed().items.size(), 1U);
}

TEST(SharedBoard, R19_AnAckOutOfOrderKeepsTheOrderOfWhatWaits) {
    SharedBoard board;
    const auto paint = [](std::uint64_t id, BackgroundID paper) {
        return PendingBatch{numberedId(id), {{SetBackground{paper}}}};
    };
    board.enqueue(paint(1, BackgroundID::sky), noon);
    board.enqueue(paint(2, BackgroundID::oat), noon);
    board.acked(numberedId(2), noon);
    EXPECT_EQ(board.confirmed().background, BackgroundID::oat);
    EXPECT_EQ(board.shown().background, BackgroundID::sky);
}

TEST(SharedBoard, EnqueueAnswersWithWhatTheShownBoardRefuses) {
    SharedBoard board;
    BoardItem tilted;
    tilted.rotationDegrees = 50;
    const auto refused = board.enqueue({numberedId(1), {{Upsert{tilted}}}}, noon);
    ASSERT_EQ(refused.size(), 1U);
    EXPECT_EQ(refused.front().reason, RejectionReason::invalidRotation);
}

} // namespace
} // namespace lumaro
