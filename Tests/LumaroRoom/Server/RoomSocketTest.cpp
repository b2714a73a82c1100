// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Protocol/Messages.h"
#include "Samples/Samples.h"
#include "Tests/LumaroRoom/Server/ServerFixture.h"

#include <thread>

namespace lumaro {
namespace {

class RoomSocketTest : public ServerFixture {
protected:
    // A device that has been welcomed.
    DeviceSocket opened(const std::string& coupleId, const std::string& token) {
        auto device = socket(coupleId, token);
        EXPECT_EQ(device.opening().status, 101);
        EXPECT_TRUE(device.receiveWith(R"("type":"welcome")"));
        return device;
    }
};

// A batch by its number, which puts up one of 50 notes in a later version.
UUID batchId(std::uint64_t number) {
    return samples::numberedId(1'000'000 + number);
}
std::string putUp(std::uint64_t number, const std::string& text) {
    BoardItem item;
    item.id = samples::numberedId(1 + number % 50);
    item.createdAt = samples::noon;
    item.updatedAt = samples::noon + std::chrono::milliseconds{number};
    item.payload = samples::plainNote(text);
    return Wire::encode(ClientMessage{ClientMessage::Ops{batchId(number), {Op{Upsert{item}}}}}).value();
}
std::string ackOf(std::uint64_t number) {
    return R"("type":"ack","batchId":")" + batchId(number).lowerString();
}

TEST_F(RoomSocketTest, UpgradesAreRefusedBeforeAnyFrame) {
    const auto couple = found();
    const auto other = found();
    const auto refusal = get("/couples/" + couple.coupleId + "/snapshot").body;
    for (const auto& token : {std::string{}, other.token, couple.token + "x"}) {
        const auto reply = socket(couple.coupleId, token).opening();
        EXPECT_EQ(reply.status, 401);
        EXPECT_EQ(reply.body, refusal);
    }
    EXPECT_EQ(socket("nosuchcouple", couple.token).opening().body, refusal);
}

TEST_F(RoomSocketTest, PagesOfOtherSitesOpenNoSocket) {
    config.publicURL = "https://board.example";
    const auto couple = found();
    for (const auto& [origin, status] : {std::pair{"https://board.example", 101},
                                         {"https://board.example:443", 101},
                                         {"http://board.example", 403},
                                         {"https://board.example.evil", 403},
                                         {"null", 403}}) {
        EXPECT_EQ(socket(couple.coupleId, couple.token, {{"Origin", origin}}).opening().status, status) << origin;
    }
}

TEST_F(RoomSocketTest, AReplacedTokenClosesItsSockets) {
    const auto couple = found();
    const auto first = join(couple);
    auto ben = opened(couple.coupleId, first.token);
    const auto second = join(couple); // the same device again
    EXPECT_EQ(second.status, JoinStatus::already);
    EXPECT_TRUE(ben.receiveWith(R"("code":"unauthorized")"));
    EXPECT_EQ(ben.closeCode(), closeUnauthorized);
    opened(couple.coupleId, second.token);
}

TEST_F(RoomSocketTest, AnAddressHasSoManySockets) {
    config.limits.socketsPerOrigin = 2;
    const auto couple = found();
    auto first = opened(couple.coupleId, couple.token);
    {
        const auto second = opened(couple.coupleId, couple.token);
        const auto refused = socket(couple.coupleId, couple.token).opening();
        EXPECT_EQ(refused.status, 429);
        EXPECT_TRUE(refused.headers.contains("retry-after"));
    }
    // The place is free again once the room has seen the socket go.
    while (socket(couple.coupleId, couple.token).opening().status == 429) {
    }
    EXPECT_TRUE(first.send("hb"));
}

TEST_F(RoomSocketTest, AFastSenderIsReadSlowlyAndLosesNothing) {
    config.limits.messagesPerSecond = 1000;
    config.limits.messageBurst = 10;
    const auto couple = found();
    auto ada = opened(couple.coupleId, couple.token);
    constexpr std::uint64_t count = 300;
    for (std::uint64_t i = 0; i < count; ++i) ada.send(putUp(i, "again"));
    for (std::uint64_t i = 0; i < count; ++i) {
        ASSERT_TRUE(ada.receiveWith(ackOf(i)));
    }
    EXPECT_EQ(get("/metrics").body.find("lumaro_delayed_frames_total 0\n"), std::string::npos);
}

TEST_F(RoomSocketTest, AReaderThatStandsStillIsCutOff) {
    config.limits.maxWaitingBytes = 200'000;
    const auto couple = found();
    const auto joined = join(couple);
    auto ada = opened(couple.coupleId, couple.token);
    auto ben = opened(couple.coupleId, joined.token);
    const std::string longText(30'000, 'x');
    // Ben reads nothing: what his machine and ours hold for him fills up.
    for (std::uint64_t i = 0; get("/metrics").body.find("lumaro_slow_readers_total 1\n") == std::string::npos; ++i) {
        ASSERT_LT(i, 2000U);
        ada.send(putUp(i, longText + std::to_string(i)));
        ASSERT_TRUE(ada.receiveWith(ackOf(i)));
    }
    EXPECT_EQ(ben.closeCode(), 0);
}

TEST_F(RoomSocketTest, ASilentSocketIsClosed) {
    config.limits.socketSilence = std::chrono::milliseconds{30};
    const auto couple = found();
    EXPECT_EQ(opened(couple.coupleId, couple.token).closeCode(), 1001);
}

TEST_F(RoomSocketTest, AServerThatGoesDownSaysGoodbye) {
    const auto couple = found();
    auto ada = opened(couple.coupleId, couple.token);
    ada.send(putUp(1, "last words"));
    ASSERT_TRUE(ada.receiveWith(R"("type":"ack")"));
    std::thread stopping{[this] { stop(); }};
    EXPECT_EQ(ada.closeCode(), 1001);
    stopping.join();
    EXPECT_EQ(get("/healthz").status, 0);
}

} // namespace
} // namespace lumaro
