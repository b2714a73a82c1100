// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Room/RoomHost.h"
#include "LumaroRoom/Server/Asio.h"
#include "LumaroRoom/Server/Metrics.h"
#include "LumaroRoom/Server/Routes.h"
#include "LumaroRoom/Server/SocketQuota.h"
#include "LumaroRoom/Store/StoreThread.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace lumaro {

/// A socket of a room, as it is reached on the thread of its connection.
class RoomSocket {
public:
    RoomSocket() = default;
    RoomSocket(const RoomSocket&) = delete;
    RoomSocket& operator=(const RoomSocket&) = delete;
    virtual ~RoomSocket() = default;

    virtual void send(std::shared_ptr<const std::string> text) = 0;
    /// Behind what is queued.
    virtual void close(int code, std::string_view reason) = 0;
    /// Reads no further until `resume`.
    virtual void pause() = 0;
    virtual void resume() = 0;
};

class Shard;

/// A connection, looked after by the shard it lives on.
class Connection {
public:
    explicit Connection(Shard& shard);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    virtual ~Connection();

    Shard& shard() const { return shard_; }
    /// Called every tick: ends what has taken too long.
    virtual void look(SteadyClock::time_point now) = 0;
    /// The server is going down: ends, as soon as that is polite.
    virtual void drain() = 0;

private:
    Shard& shard_;
};

/// A thread of the server: its event loop, the connections that live on it, and the rooms of the couples that are
/// pinned to it. A connection of another shard reaches a room by messages between the loops. Everything is called on
/// the shard's thread where nothing else is said.
class Shard final : public RoomSockets, public Neighbours {
public:
    /// What all shards share; thread-safe or constant, and alive as long as they are.
    struct Shared {
        const ServerConfig& config;
        const std::string& publicOrigin;
        PairingService& pairing;
        StoreThread& store;
        SocketQuota& quota;
        WallClock& clock;
        Log& log;
    };
    using Shards = std::vector<std::unique_ptr<Shard>>;

    /// `shards` is filled with all of them before the first one runs; `weather` lives on the first one's thread.
    Shard(std::size_t index, const Shards& shards, const Shared& shared);
    ~Shard() override;

    /// The thread's body: ends after `stop`.
    void run();
    /// From any thread.
    void stop() { context_.stop(); }
    /// Ends all connections, politely; `then` is called when they are gone. From any thread.
    void drain(std::function<void()> then);
    bool isDraining() const { return isDraining_; }

    /// Where the others ask for the weather. Called before the shard runs, on the first one.
    void provideWeather(WeatherService& weather) { weather_ = &weather; }

    Executor executor() { return context_.get_executor(); }
    asio::io_context& context() { return context_; }
    const Shared& shared() const { return shared_; }
    const ServerLimits& limits() const { return shared_.config.limits; }
    Routes& routes() { return routes_; }
    ConnectionFigures& figures() { return figures_; }
    /// For `co_spawn`: the end of a connection's coroutine. An exception ends that connection alone, and is logged.
    auto noteEnd() {
        return [this](const std::exception_ptr& fault) {
            if (fault) ended(fault);
        };
    }
    /// From any thread.
    Shard& shardOf(std::string_view coupleId) const;
    /// Runs a function on the shard's thread: at once when that is this one. From any thread.
    template <class Function>
    void dispatch(Function function) {
        asio::dispatch(context_, std::move(function));
    }

    void add(Connection& connection) { connections_.insert(&connection); }
    void remove(Connection& connection);

    /// A number no other socket of the server has.
    SocketId nextSocketId() { return SocketId{++socketCount_ * shards_.size() + index_}; }
    /// Whether the token opens a couple's room; `then` hears it on this thread.
    void authorize(const std::string& coupleId, const TokenHash& token,
                   std::move_only_function<void(StoreResult<bool>)> then);

    // What the connections of any shard tell the room of a couple of this one.

    void joined(SocketId id, Shard& home, std::weak_ptr<RoomSocket> socket, const std::string& coupleId,
                const TokenHash& token);
    void received(SocketId id, std::string_view frame, Pace pace);
    void left(SocketId id);

    // What the rooms want of their sockets.

    void send(SocketId socket, std::shared_ptr<const std::string> text) override;
    void close(SocketId socket, int code, std::string_view reason) override;
    void resume(SocketId socket) override;

    // What the routes want of the other shards.

    void refreshMembers(const std::string& coupleId) override;
    void online(const std::string& coupleId, std::move_only_function<void(PartnerSet)> then) override;
    void weather(CoarsePosition position, WeatherService::Then then) override;
    void metrics(std::move_only_function<void(std::string)> then) override;

private:
    struct Link {
        Shard* home;
        std::weak_ptr<RoomSocket> socket; ///< taken hold of on its home's thread alone
    };
    template <class Action>
    void reach(SocketId socket, Action action);
    void ended(const std::exception_ptr& fault);
    Awaitable<void> tick();
    void sweepStore();
    void collect(Shard& asker, std::size_t next, ShardFigures sum, std::move_only_function<void(std::string)> then);

    std::size_t index_;
    const Shards& shards_;
    Shared shared_;
    std::unordered_set<Connection*> connections_;
    std::unordered_map<SocketId, Link> sockets_;
    std::uint64_t socketCount_ = 0;
    ConnectionFigures figures_;
    WeatherService* weather_ = nullptr;
    bool isDraining_ = false;
    std::function<void()> drained_;
    SteadyClock::time_point nextSweep_;
    std::unique_ptr<StoreQueue> store_;
    RoomHost rooms_;
    Routes routes_;
    asio::io_context context_{1}; ///< the last, as what still waits in it refers to the others
};

} // namespace lumaro
