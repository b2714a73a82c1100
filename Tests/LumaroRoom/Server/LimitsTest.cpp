// SPDX-License-Identifier: Apache-2.0
// The limits that no flag sets, at a server in this process; BlackBox/server_test.py has what else a server promises.
#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Server/Server.h"
#include "LumaroRoom/Server/Shard.h"
#include "LumaroRoom/Server/SystemRandomSource.h"
#include "LumaroRoom/Sqlite/SqliteStore.h"
#include "Platform/Posix/SystemClock.h"
#include "Tests/Fakes/RecordingLog.h"
#include "Tests/Support/ScratchFolder.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <gtest/gtest.h>

#include <future>
#include <iterator>
#include <new>
#include <string>
#include <thread>
#include <vector>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

struct NoLog final : Log {
    void write(LogLevel, std::string_view, std::string_view) override {}
};

class LimitsTest : public testing::Test {
protected:
    LimitsTest() {
        config_.port = 0;
        config_.limits.tick = 5ms;
    }
    void start() {
        server_ =
            Server::start(config_, SqliteStore::open(folder_.file("room.db"), log_).value(), {clock_, random_, log_})
                .value();
    }
    /// All that the server says to this, until it closes the connection.
    std::string said(const std::string& text) const {
        boost::asio::ip::tcp::iostream line;
        line.expires_after(20s);
        line.connect("127.0.0.1", std::to_string(server_->port()));
        line << text << std::flush;
        return {std::istreambuf_iterator<char>{line}, {}};
    }
    std::string asked(const std::string& line, const std::string& headers, const std::string& body) const {
        return said(line + " HTTP/1.1\r\nHost: room\r\n" + headers + "Content-Length: " + std::to_string(body.size()) +
                    "\r\n\r\n" + body);
    }
    CreatedCouple found() const {
        const auto answer = asked("POST /couples", "Connection: close\r\n", R"({"deviceId":"d","name":"Ada"})");
        return Wire::decode<CreatedCouple>(answer.substr(answer.find("\r\n\r\n") + 4)).value();
    }

    ScratchFolder folder_;
    SystemClock clock_;
    SystemRandomSource random_;
    NoLog log_;
    ServerConfig config_;
    std::unique_ptr<Server> server_;
};

TEST_F(LimitsTest, ARequestThatNeverEndsIsCutOff) {
    config_.limits.requestTime = 20ms;
    start();
    EXPECT_EQ(said("POST /couples HTTP/1.1\r\nContent-Length: 100\r\n\r\nslowly"), "");
}

TEST_F(LimitsTest, P20_ASilentSocketIsClosed) {
    config_.limits.socketSilence = config_.limits.closingTime = 30ms;
    start();
    const auto couple = found();
    const auto heard = asked("GET /couples/" + couple.coupleId + "/ws",
                             "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\n"
                             "Sec-WebSocket-Key: bHVtYXJvIGx1bWFybyE=\r\nAuthorization: Bearer " +
                                 couple.token + "\r\n",
                             "");
    EXPECT_NE(heard.find(R"("type":"welcome")"), std::string::npos) << heard;
    EXPECT_NE(heard.find("\x03\xe9"), std::string::npos) << "closed with 1001";
}

TEST_F(LimitsTest, ABoardHasRoomForSoManyPictures) {
    config_.limits.maxCoupleMediaBytes = 40;
    start();
    const auto couple = found();
    const auto put = [&](const std::string& digit) {
        return asked("PUT /couples/" + couple.coupleId + "/media/6f9619ff-8b86-4d01-b42d-00cf4fc964f" + digit,
                     "Connection: close\r\nAuthorization: Bearer " + couple.token + "\r\n",
                     "\x89PNG\r\n\x1a\n and its pixels")
            .substr(0, 12);
    };
    EXPECT_EQ(put("0"), "HTTP/1.1 201");
    EXPECT_EQ(put("1"), "HTTP/1.1 429");
}

TEST_F(LimitsTest, P44_CoversMakeRoomForEachOtherBesideABoardFullOfPictures) {
    config_.limits.maxCoupleMediaBytes = 1;
    config_.limits.maxCoupleCoverBytes = 2 * minCoverWeight;
    start();
    const auto couple = found();
    const auto status = [&](const std::string& method, const std::string& digit) {
        return asked(method + " /couples/" + couple.coupleId + "/covers/6f9619ff-8b86-4d01-b42d-00cf4fc964f" + digit,
                     "Connection: close\r\nAuthorization: Bearer " + couple.token + "\r\n",
                     method == "PUT" ? "\xff\xd8\xff and its pixels" : "")
            .substr(9, 3);
    };
    for (const auto* digit : {"1", "2", "3"}) EXPECT_EQ(status("PUT", digit), "201") << digit;
    EXPECT_EQ(status("GET", "1"), "404");
    EXPECT_EQ(status("GET", "2"), "200");
    EXPECT_EQ(status("PUT", "3"), "200");
}

TEST_F(LimitsTest, MemoryThatRunsOutEndsAConnectionAndNoThread) {
    RecordingLog log;
    StoreThread store{SqliteStore::open(folder_.file("room.db"), log_).value()};
    PairingService pairing{"http://room", random_, {}};
    SocketQuota quota{1};
    const std::string origin = "http://room";
    Shard::Shards shards;
    shards.push_back(
        std::make_unique<Shard>(0, shards, Shard::Shared{config_, origin, pairing, store, quota, clock_, log}));
    auto& shard = *shards.front();
    std::thread thread{[&] { shard.run(); }};
    // In a coroutine, and in an operation that one waits for.
    asio::co_spawn(shard.executor(), []() -> Awaitable<void> { co_return throw std::bad_alloc{}; }(), shard.noteEnd());
    asio::post(shard.executor(), [] { throw std::bad_alloc{}; });
    // The coroutine's end is posted when it is met: behind the first of these, and before the second.
    std::promise<void> later;
    asio::post(shard.executor(), [&] { asio::post(shard.executor(), [&] { later.set_value(); }); });
    later.get_future().wait();
    store.stop();
    shard.stop();
    thread.join();
    EXPECT_EQ(log.lines, (std::vector<std::string>(2, "server: a connection was given up: std::bad_alloc")));
}

} // namespace
} // namespace lumaro
