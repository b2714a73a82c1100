// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Pairing/PairingMessages.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Server/Server.h"
#include "LumaroRoom/Server/SystemRandomSource.h"
#include "LumaroRoom/Sqlite/SqliteStore.h"
#include "Platform/Posix/SystemClock.h"
#include "Tests/LumaroRoom/Server/TestClient.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

namespace lumaro {

/// Keeps what all threads say.
class SharedLog final : public Log {
public:
    void write(LogLevel, std::string_view, std::string_view message) override {
        const std::scoped_lock lock{mutex_};
        text_.append(message).append("\n");
    }
    std::string text() const {
        const std::scoped_lock lock{mutex_};
        return text_;
    }

private:
    mutable std::mutex mutex_;
    std::string text_;
};

/// The real server on a free port, with two shards and a database of its own.
class ServerFixture : public ::testing::Test {
protected:
    ServerFixture() {
        config.port = 0;
        config.threads = 2;
        config.limits.tick = std::chrono::milliseconds{5};
    }

    /// As the server runs: at the latest here, with `config` as it is then.
    Server& server() {
        if (!server_) {
            auto store = SqliteStore::open(folder.file("room.db"), log);
            auto started = store ? Server::start(config, std::move(*store), {clock_, random_, log})
                                 : std::unexpected(store.error().message);
            if (!started) ADD_FAILURE() << started.error();
            server_ = std::move(started.value());
        }
        return *server_;
    }
    std::uint16_t port() { return server().port(); }
    void stop() { server().stop(); }

    Reply get(const std::string& target, const std::string& token = "") { return asked("GET", target, token); }
    Reply asked(const std::string& method, const std::string& target, const std::string& token = "",
                const std::string& body = "") {
        return ask(port(), {method, target, token, body, {}}, layer);
    }

    /// Ada's new board.
    CreatedCouple found() {
        const auto reply = asked("POST", "/couples", "", R"({"deviceId":"ada-1","name":"Ada"})");
        EXPECT_EQ(reply.status, 201) << reply.body;
        return Wire::decode<CreatedCouple>(reply.body).value();
    }
    /// A device of Ben's on Ada's board.
    Joined join(const CreatedCouple& couple, const std::string& device = "ben-1") {
        const auto reply =
            asked("POST", "/joins/link", "",
                  R"({"inviteId":")" + couple.invite.inviteId + R"(","deviceId":")" + device + R"(","name":"Ben"})");
        EXPECT_EQ(reply.status, 200) << reply.body;
        return Wire::decode<Joined>(reply.body).value();
    }
    DeviceSocket socket(const std::string& coupleId, const std::string& token, std::vector<HttpHeader> headers = {}) {
        return DeviceSocket{port(), coupleId, token, std::move(headers), layer};
    }

    ScratchFolder folder;
    ServerConfig config;
    SharedLog log;
    Layer layer = Layer::plain;

private:
    SystemClock clock_;
    SystemRandomSource random_;
    std::unique_ptr<Server> server_;
};

} // namespace lumaro
