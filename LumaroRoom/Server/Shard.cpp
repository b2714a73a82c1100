// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Shard.h"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/executor_work_guard.hpp>

#include <chrono>
#include <new>
#include <utility>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

// While there is more to sweep, and when there was none.
constexpr auto sweepPace = 1s;
constexpr auto sweepRest = 60s;

} // namespace

Connection::Connection(Shard& shard) : shard_(shard) {
    shard_.add(*this);
}

Connection::~Connection() {
    shard_.remove(*this);
}

Shard::Shard(std::size_t index, const Shards& shards, const Shared& shared)
    : index_(index), shards_(shards), shared_(shared), nextSweep_(SteadyClock::now() + sweepPace),
      store_(shared.store.queueFor([this](auto done) {
          // What rooms and requests wait for is told to all of them, or to none.
          asio::post(context_, [done = std::move(done)]() mutable noexcept { done(); });
      })),
      rooms_(*store_, *this, shared.clock, shared.log), routes_(shared.config, {.store = *store_,
                                                                                .pairing = shared.pairing,
                                                                                .neighbours = *this,
                                                                                .clock = shared.clock,
                                                                                .log = shared.log}) {
}

Shard::~Shard() = default;

void Shard::run() {
    const auto staysOpen = asio::make_work_guard(context_);
    asio::co_spawn(executor(), tick(), [](const std::exception_ptr& fault) {
        if (fault) std::terminate(); // without ticks nothing would end that takes too long
    });
    while (!context_.stopped()) {
        try {
            context_.run();
        } catch (const std::bad_alloc&) {
            // It was an operation on a connection, and took the connection's coroutine with it.
            ended(std::current_exception());
        }
    }
}

void Shard::ended(const std::exception_ptr& fault) {
    try {
        std::rethrow_exception(fault);
    } catch (const std::exception& exception) {
        shared_.log.write(LogLevel::error, "server", std::string{"a connection was given up: "} + exception.what());
    }
}

void Shard::drain(std::function<void()> then) {
    asio::post(context_, [this, then = std::move(then)]() mutable {
        isDraining_ = true;
        if (connections_.empty()) return then();
        drained_ = std::move(then);
        for (auto* const connection : connections_) connection->drain();
    });
}

void Shard::remove(Connection& connection) {
    connections_.erase(&connection);
    if (connections_.empty() && drained_) std::exchange(drained_, nullptr)();
}

Shard& Shard::shardOf(std::string_view coupleId) const {
    return *shards_[std::hash<std::string_view>{}(coupleId) % shards_.size()];
}

Awaitable<void> Shard::tick() {
    SteadyTimer timer{context_};
    for (;;) {
        timer.expires_after(limits().tick);
        co_await timer.async_wait(asTuple);
        const auto now = SteadyClock::now();
        for (auto* const connection : connections_) connection->look(now);
        rooms_.tick();
        if (index_ == 0 && now >= nextSweep_) sweepStore();
    }
}

void Shard::sweepStore() {
    nextSweep_ = SteadyClock::time_point::max(); // until this portion is done
    const auto hasMore = std::make_shared<bool>(false);
    store_->submit(
        [hasMore, now = shared_.clock.now()](Store& store) -> StoreResult<void> {
            const auto swept = store.sweep(now);
            if (!swept) return std::unexpected(swept.error());
            *hasMore = *swept;
            return {};
        },
        [this, hasMore](const StoreResult<void>& done) {
            if (!done) shared_.log.write(LogLevel::error, "store", "sweeping failed: " + done.error().message);
            nextSweep_ = SteadyClock::now() + (*hasMore ? sweepPace : sweepRest);
        });
}

void Shard::authorize(const std::string& coupleId, const TokenHash& token,
                      std::move_only_function<void(StoreResult<bool>)> then) {
    auto& owner = shardOf(coupleId);
    owner.dispatch([this, &owner, coupleId, token, then = std::move(then)]() mutable {
        owner.rooms_.authorize(coupleId, token, [this, then = std::move(then)](StoreResult<bool> opens) mutable {
            dispatch([then = std::move(then), opens = std::move(opens)]() mutable { then(std::move(opens)); });
        });
    });
}

void Shard::joined(SocketId id, Shard& home, std::weak_ptr<RoomSocket> socket, const std::string& coupleId,
                   const TokenHash& token) {
    sockets_.emplace(id, Link{&home, std::move(socket)});
    rooms_.joined(id, coupleId, token);
}

void Shard::received(SocketId id, std::string_view frame, Pace pace) {
    rooms_.received(id, frame, pace);
    if (!rooms_.wantsMore(id)) {
        reach(id, [](RoomSocket& socket) { socket.pause(); });
    }
}

void Shard::left(SocketId id) {
    sockets_.erase(id);
    rooms_.left(id);
}

template <class Action>
void Shard::reach(SocketId socket, Action action) {
    const auto place = sockets_.find(socket);
    if (place == sockets_.end()) return;
    auto* const home = place->second.home;
    if (home == this) {
        if (const auto here = place->second.socket.lock()) action(*here);
        return;
    }
    asio::post(home->context_, [link = place->second.socket, action = std::move(action)]() mutable {
        if (const auto there = link.lock()) action(*there);
    });
}

void Shard::send(SocketId socket, std::shared_ptr<const std::string> text) {
    reach(socket, [text = std::move(text)](RoomSocket& reached) mutable { reached.send(std::move(text)); });
}

void Shard::close(SocketId socket, int code, std::string_view reason) {
    reach(socket, [code, reason = std::string{reason}](RoomSocket& reached) { reached.close(code, reason); });
}

void Shard::resume(SocketId socket) {
    reach(socket, [](RoomSocket& reached) { reached.resume(); });
}

void Shard::refreshMembers(const std::string& coupleId) {
    auto& owner = shardOf(coupleId);
    owner.dispatch([&owner, coupleId] { owner.rooms_.refreshMembers(coupleId); });
}

void Shard::online(const std::string& coupleId, std::move_only_function<void(PartnerSet)> then) {
    auto& owner = shardOf(coupleId);
    owner.dispatch([this, &owner, coupleId, then = std::move(then)]() mutable {
        const auto online = owner.rooms_.online(coupleId);
        dispatch([then = std::move(then), online]() mutable { then(online); });
    });
}

void Shard::weather(CoarsePosition position, WeatherService::Then then) {
    auto& provider = *shards_.front();
    provider.dispatch([this, &provider, position, then = std::move(then)]() mutable {
        provider.weather_->ask(position, [this, then = std::move(then)](auto weather) mutable {
            dispatch([then = std::move(then), weather = std::move(weather)]() mutable { then(std::move(weather)); });
        });
    });
}

void Shard::metrics(std::move_only_function<void(std::string)> then) {
    collect(*this, 0, {}, std::move(then));
}

// Goes from shard to shard and adds up.
void Shard::collect(Shard& asker, std::size_t next, ShardFigures sum, std::move_only_function<void(std::string)> then) {
    if (next == shards_.size()) {
        return asker.dispatch(
            [&asker, sum, then = std::move(then)]() mutable { then(metricsText(sum, asker.shared_.store.figures())); });
    }
    auto& shard = *shards_[next];
    shard.dispatch([&shard, &asker, next, sum, then = std::move(then)]() mutable {
        auto figures = shard.figures_;
        figures.open = shard.connections_.size();
        sum.add({shard.rooms_.figures(), figures});
        shard.collect(asker, next + 1, sum, std::move(then));
    });
}

} // namespace lumaro
