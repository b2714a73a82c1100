// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/SyncClient/SyncClient.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/Support/Wire.h"
#include "Tests/SyncClient/SyncFixture.h"

#include <limits>
#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;
using samples::numberedId;
using Frames = std::vector<std::string>;
using State = ConnectionState;

const std::string welcome = R"({"v":1,"type":"welcome","partner":"b","board":{"v":1,"background":"oat","updatedAt":1,)"
                            R"("items":[]},"roster":["b"]})";
const std::string refusal = R"({"v":1,"type":"error","code":"unauthorized","message":"joined elsewhere"})";

std::string framed(std::uint64_t id) {
    return R"({"v":1,"type":"ops","batchId":")" + numberedId(id).lowerString() +
           R"(","ops":[{"op":"setBackground","background":"sage"}]})";
}

TEST(ReconnectBackoff, DoublesUpToTheCapAndStaysThere) {
    using Delays = std::vector<Seconds>;
    const std::vector<std::pair<ReconnectBackoff, Delays>> rows{
        {{}, {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}},
        {{.attempt = -2}, {1s, 1s, 1s, 2s}},
        {{.attempt = 5000}, {60s}},
        {{.base = 90s}, {60s, 60s}},
        {{.base = 500ms, .multiplier = 1}, {500ms, 500ms}},
        {{.base = 0s, .multiplier = 1e308}, {0s, 0s, 60s}},
    };
    for (auto [backoff, delays] : rows) {
        EXPECT_EQ(backoff.schedule(std::ssize(delays)), delays);
        for (const auto& delay : delays) EXPECT_EQ(backoff.nextDelay(), delay);
    }
}

class SyncClientTest : public SyncFixture, public SyncClient::Listener {
protected:
    void start(std::optional<std::string> device = {}) {
        client_.emplace("https://board.example", token_, std::move(device), outbox(), configuration_, ports(), *this);
    }
    void connect() {
        client_->connect();
        network_.accept();
    }
    void online() {
        start();
        connect();
    }
    SendOutcome::Way send(std::uint64_t id) { return client_->send(painted(), numberedId(id))->way; }

    void received(const ServerMessage& message) override {
        heard_.push_back(message);
        if (const auto act = std::exchange(onMessage_, nullptr)) act();
    }
    void stateChanged(const ConnectionState& state) override {
        states_.push_back(state);
        if (state == actAt_) std::exchange(onState_, [] {})();
    }

    static constexpr auto transmitted = SendOutcome::Way::transmitted;
    static constexpr auto queued = SendOutcome::Way::queued;
    std::vector<ServerMessage> heard_;
    std::vector<ConnectionState> states_;
    std::function<void()> onMessage_;
    std::optional<ConnectionState> actAt_;
    std::function<void()> onState_;
    SyncClient::Configuration configuration_;
    std::optional<SyncClient> client_;
};

TEST_F(SyncClientTest, P3_P7_P17_AsksForItsRoomWithItsTokenAndTheDeviceItKnows) {
    for (const auto& device : {std::optional<std::string>{}, std::optional<std::string>{"laptop"}}) {
        start(device);
        client_->connect();
        const auto& request = network_.attempts().back();
        EXPECT_EQ(request.url, "wss://board.example/couples/abc/ws");
        EXPECT_EQ(request.timeout, 60s);
        std::vector<HttpHeader> headers{{"authorization", "Bearer lm1.abc.b.hush7"}};
        if (device) headers.push_back({"x-lmr-device", *device});
        EXPECT_EQ(request.headers, headers);
        client_.reset();
    }
}

TEST_F(SyncClientTest, P40_WaitsLongerEachTimeUntilARoomHasSpoken) {
    start();
    client_->connect();
    for (const double delay : {1., 2., 4., 8.}) {
        if (delay == 4.) network_.accept();
        network_.end({WebSocketEnd::Failed{"no route"}});
        sleeper_.advance(Seconds{delay} - 1ms);
        ASSERT_FALSE(network_.isHeld()) << delay;
        sleeper_.advance(1ms);
        ASSERT_TRUE(network_.isHeld()) << delay;
    }
    network_.accept();
    network_.say(welcome);
    network_.end({WebSocketEnd::Closed{1001}});
    EXPECT_EQ(states_.back(), (State{State::Waiting{1, 1s}}));
}

TEST_F(SyncClientTest, P18_P21_EveryEndIsARefusalOrLeadsToAnotherAttempt) {
    struct Row {
        WebSocketEnd end;
        std::optional<HttpClient::Answer> inquiry;
        bool isOpen;
        std::string line;
    };
    const std::string refused = "the room refused this token; not reconnecting";
    const std::string closed = "connection closed; reconnecting";
    using End = WebSocketEnd;
    const std::vector<Row> rows{
        {{End::Refused{401}}, {}, false, refused},
        {{End::Refused{503}}, {}, false, "connection ended: The server answered 503."},
        {{End::Refused{0}}, HttpResponse{403, ""}, false, refused},
        {{End::Refused{0}}, HttpResponse{502, ""}, false, "connection ended: The server answered 502."},
        {{End::Refused{0}}, HttpResponse{200, "{}"}, false, "connection ended: The server did not open a socket."},
        {{End::Refused{0}}, std::unexpected(HttpFailure{"timed out"}), false, "connection ended: timed out"},
        {{End::Closed{4401}}, {}, true, refused},
        {{End::Closed{0}}, {}, true, closed},
        {{End::Failed{"reset"}}, {}, true, "connection ended: reset"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        states_.clear();
        heard_.clear();
        start();
        client_->connect();
        if (row.isOpen) network_.accept();
        network_.end(row.end);
        if (row.inquiry) {
            ASSERT_TRUE(http_.answer(*row.inquiry));
            EXPECT_EQ(http_.requests.back().url, "https://board.example/couples/abc/snapshot");
        }
        EXPECT_EQ(log_.lines.back(), "sync: " + row.line);
        const bool isRejected = row.line == refused;
        EXPECT_EQ(states_.back(), isRejected ? State{State::Rejected{}} : (State{State::Waiting{1, 1s}}));
        EXPECT_EQ(heard_.size(), isRejected ? 1U : 0U);
        EXPECT_EQ(sleeper_.waiting(), isRejected ? 0U : 1U);
    }
}

TEST_F(SyncClientTest, P21_P42_ARefusedTokenIsToldOnceAndNothingLeadsOut) {
    for (const bool isRoomsWord : {true, false}) {
        heard_.clear();
        online();
        isRoomsWord ? network_.say(refusal) : network_.end({WebSocketEnd::Closed{closeUnauthorized}});
        client_->connect();
        client_->retryNow();
        client_->disconnect();
        sleeper_.advance(1h);
        EXPECT_FALSE(network_.isHeld());
        EXPECT_EQ(client_->connectionState(), State{State::Rejected{}});
        const std::string words = isRoomsWord ? "joined elsewhere" : "this Mac's token was replaced";
        EXPECT_EQ(heard_, (std::vector{ServerMessage{ServerMessage::Error{{"unauthorized"}, words}}}));
    }
}

TEST_F(SyncClientTest, WhatNamesAHeldMediumWaitsForItAndAllBehindWaitsToo) {
    const auto showing = [](Payload payload) {
        BoardItem item;
        item.payload = std::move(payload);
        return std::vector<Op>{{Upsert{item}}};
    };
    const auto goneOut = [this] { return network_.takeFrames().size(); };
    const Payload photo{PhotoPayload{numberedId(70), {}, {}, {}}};
    const Payload sticker{StickerPayload{numberedId(71)}};
    for (const bool isConnectedFirst : {true, false}) {
        start();
        if (isConnectedFirst) connect();
        for (std::uint64_t medium : {70, 71}) client_->holdMedia(numberedId(medium));
        EXPECT_EQ(send(1), isConnectedFirst ? transmitted : queued);
        EXPECT_EQ(client_->send(showing(photo), numberedId(2))->way, queued);
        EXPECT_EQ(client_->send(showing(sticker), numberedId(3))->way, queued);
        EXPECT_EQ(send(4), queued);
        if (!isConnectedFirst) connect();
        EXPECT_EQ(network_.takeFrames(), Frames{framed(1)});
        client_->releaseMedia(numberedId(71));
        network_.say(ack(numberedId(1)));
        EXPECT_EQ(goneOut(), 0U) << "the order stays";
        client_->releaseMedia(numberedId(70));
        EXPECT_EQ(goneOut(), 3U);
        for (std::uint64_t id : {2, 3, 4}) network_.say(ack(numberedId(id)));
        EXPECT_EQ(filesLeft(), 0U);
        client_.reset();
    }
}

TEST_F(SyncClientTest, P38_ASlowLineIsNotFilledBeyondTheWindow) {
    configuration_.sendWindowBytes = framed(1).size() + 1;
    start();
    for (std::uint64_t id = 1; id <= 5; ++id) EXPECT_EQ(send(id), queued);
    network_.block();
    connect();
    EXPECT_EQ(network_.takeFrames(), (Frames{framed(1), framed(2)}));
    EXPECT_EQ(send(6), queued);
    network_.say(ack(numberedId(1)));
    EXPECT_EQ(network_.takeFrames(), Frames{}) << "the window is still full";
    network_.drain();
    EXPECT_EQ(network_.takeFrames(), (Frames{framed(3), framed(4)}));
    network_.drain();
    EXPECT_EQ(send(7), queued);
    network_.drain();
    EXPECT_EQ(network_.takeFrames(), (Frames{framed(5), framed(6), framed(7)}));
}

TEST_F(SyncClientTest, P20_BeatsAndTakesTwoSilentIntervalsForAClosedLine) {
    online();
    sleeper_.advance(30s);
    EXPECT_EQ(network_.takeFrames(), Frames{"hb"});
    sleeper_.advance(29s);
    network_.say("hb-ack");
    sleeper_.advance(60s - 1ms);
    EXPECT_EQ(network_.takeFrames(), (Frames{"hb", "hb"}));
    EXPECT_TRUE(client_->isConnected());
    sleeper_.advance(1ms);
    EXPECT_EQ(client_->connectionState(), (State{State::Waiting{1, 1s}}));
    EXPECT_EQ(log_.lines.back(), "sync: connection closed; reconnecting");
    EXPECT_FALSE(network_.isHeld());
}

TEST_F(SyncClientTest, P20_P26_HandsOnWhatItCanReadAndNothingElse) {
    online();
    for (const auto* frame : {"hb", "hb ", "", "{", "\xFF", R"({"type":"confetti"})"}) network_.say(frame);
    EXPECT_TRUE(heard_.empty());
    EXPECT_EQ(log_.lines.back(), "sync: socket open");
    network_.say(R"({"type":"error","code":"rate_limited","message":"slowly"})");
    EXPECT_EQ(heard_, (std::vector{ServerMessage{ServerMessage::Error{{"rate_limited"}, "slowly"}}}));
    EXPECT_TRUE(client_->isConnected());
}

TEST_F(SyncClientTest, P37_AnAckHasLeftTheOutboxWhenItIsHeardEvenIfTheDiskFails) {
    online();
    EXPECT_EQ(send(1), transmitted);
    fault_ = FileFault::inOut;
    onMessage_ = [&] { EXPECT_EQ(client_->pendingCount(), 0U); };
    network_.say(ack(numberedId(1)));
    EXPECT_EQ(heard_.size(), 1U);
    EXPECT_EQ(filesLeft(), 1U) << "a restart sends it once more";
    EXPECT_TRUE(log_.lines.end()[-2].starts_with("sync: an acknowledged batch keeps its file")) << log_.lines.end()[-2];
}

TEST_F(SyncClientTest, P37_WhatIsNotStoredIsNotSent) {
    online();
    const auto tooMany = client_->send(std::vector<Op>(BoardSpec::maxOpsPerBatch + 1, painted()[0]), numberedId(1));
    EXPECT_EQ(std::get<BatchTooLarge>(tooMany.error()).ops, 101U);
    BoardItem nowhere;
    nowhere.center.x = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(std::holds_alternative<EncodeError>(client_->send({{Upsert{nowhere}}}, numberedId(2)).error()));
    fault_ = FileFault::noSpace;
    EXPECT_EQ(std::get<FileError>(client_->send(painted(), numberedId(3)).error()).fault, FileFault::noSpace);
    EXPECT_EQ(client_->pendingCount(), 0U);
    EXPECT_EQ(network_.takeFrames(), Frames{});
    fault_.reset();
    clock_.shift(1500us);
    EXPECT_EQ(client_->send(painted(), numberedId(4))->batch.createdAt, samples::noon + 2ms);
}

TEST_F(SyncClientTest, P40_StopsStartsAgainAndTriesAtOnceWhenAsked) {
    online();
    client_->disconnect();
    EXPECT_FALSE(network_.isHeld());
    EXPECT_EQ(sleeper_.waiting(), 0U);
    client_->retryNow();
    EXPECT_EQ(client_->connectionState(), State{State::Stopped{}});
    client_->connect();
    network_.end({WebSocketEnd::Failed{}});
    client_->connect();
    EXPECT_FALSE(network_.isHeld()) << "the loop is running already";
    client_->retryNow();
    EXPECT_EQ(client_->connectionState(), State{State::Connecting{}});
    EXPECT_EQ(sleeper_.waiting(), 0U);
    network_.end({WebSocketEnd::Refused{0}});
    client_->shutdown();
    EXPECT_EQ(http_.open(), 0U);
    client_->connect();
    EXPECT_EQ(client_->connectionState(), State{State::Stopped{}});
}

TEST_F(SyncClientTest, TheListenerMayTurnTheClientAroundInAnyState) {
    const std::vector<State> turns{{State::Connecting{}}, {State::Connected{}}, {State::Waiting{1, 1s}}};
    for (std::size_t turn = 0; turn < turns.size(); ++turn) {
        for (const bool again : {false, true}) {
            start();
            actAt_ = turns[turn];
            onState_ = [&] {
                client_->disconnect();
                if (again) client_->connect();
            };
            client_->connect();
            if (turn > 0) network_.accept();
            if (turn > 1) network_.end({WebSocketEnd::Closed{}});
            EXPECT_EQ(states_.back(), (again ? State{State::Connecting{}} : State{State::Stopped{}})) << turn;
            EXPECT_EQ(network_.isHeld(), again) << turn;
            EXPECT_EQ(sleeper_.waiting(), 0U) << turn;
            client_.reset();
        }
    }
}

TEST_F(SyncClientTest, FetchesTheWholeBoard) {
    start();
    std::expected<Board, SyncClient::SnapshotError> got;
    const auto answered = [&](const HttpClient::Answer& answer) {
        const auto call = client_->snapshot([&](auto board) { got = std::move(board); });
        EXPECT_TRUE(http_.answer(answer));
        return got ? std::variant_npos : got.error().index();
    };
    EXPECT_EQ(answered(HttpResponse{404, ""}), 0U);
    EXPECT_EQ(answered(std::unexpected(HttpFailure{})), 1U);
    EXPECT_EQ(answered(HttpResponse{200, "no board"}), 2U);
    EXPECT_EQ(answered(HttpResponse{200, Wire::encode(samples::typicalBoard()).value()}), std::variant_npos);
    EXPECT_EQ(got, samples::typicalBoard());
    EXPECT_EQ(http_.requests[0].headers, (std::vector<HttpHeader>{{"authorization", "Bearer lm1.abc.b.hush7"}}));
}

} // namespace
} // namespace lumaro
