// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/WallClock.h"
#include "LumaroRoom/Pairing/PairingService.h"
#include "LumaroRoom/Room/RoomHost.h"
#include "Tests/Simulation/SimNetwork.h"
#include "Tests/Simulation/SimStoreQueue.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace lumaro::simulation {

/// A machine's clock, wrong by as much as the script says.
class SimClock final : public WallClock {
public:
    explicit SimClock(const ManualSleeper& time) : time_(time) {}
    Instant now() override { return samples::noon + std::chrono::duration_cast<Microseconds>(time_.now()) + skew; }
    Microseconds skew{0};

private:
    const ManualSleeper& time_;
};

/// The room server: the real rooms and the real pairing, over a store that outlives it. What a server's network layer
/// does stands here: asking for tokens, pausing a socket whose frames wait, passing pairing calls on.
class SimServer final : private RoomSockets, private SimNetwork::Server {
public:
    struct Parts {
        ManualSleeper& time;
        SimNetwork& network;
        SimStore& store;
        RandomSource& random;
        Witness& witness;
        Trace& trace;
        Coverage& coverage;
        Sabotage sabotage;
    };
    explicit SimServer(Parts parts) : parts_(parts), clock_(parts.time) {}
    ~SimServer() override;

    bool isUp() const { return process_ != nullptr; }
    void start();
    void kill(Notice notice, samples::Random& random);
    void killAt(KillPoint point, Notice notice, std::uint64_t salt);

    SimClock& clock() { return clock_; }
    SimStoreQueue* queue() { return process_ ? &process_->queue : nullptr; }
    RoomHost::Figures figures() const { return process_ ? process_->host.figures() : RoomHost::Figures{}; }

    /// A call of the pairing service: `then` hears its answer once it is durable; nothing when the server is down, dies
    /// or fails.
    template <class T>
    void call(std::function<PairingResult<T>(PairingService&, Store&, Instant)> work,
              std::function<void(std::optional<std::expected<T, PairingRefusal>>)> then);
    void refreshMembers(const std::string& coupleId);
    /// The one plain request of a device: the board, for a token that is accepted.
    void snapshot(const HttpRequest& request, std::function<void(HttpClient::Answer)> then);
    /// Work of another node, or of the server's own housekeeping, on the same store.
    void submit(StoreQueue::Work work);

private:
    struct NullLog final : Log {
        void write(LogLevel /*level*/, std::string_view /*category*/, std::string_view /*message*/) override {}
    };
    struct Process {
        explicit Process(SimServer& server);
        SimStoreQueue queue;
        RoomHost host;
        PairingService pairing;
        std::map<SocketId, std::deque<std::string>> unread; ///< of sockets that are paused
        std::map<SocketId, std::unique_ptr<Sleeper::Wait>> resuming;
        std::unique_ptr<Sleeper::Wait> tick;
    };

    void send(SocketId socket, SharedText text) override;
    void close(SocketId socket, int code, std::string_view reason) override;
    void resume(SocketId socket) override;

    void asked(SocketId socket, const WebSocketRequest& request) override;
    void received(SocketId socket, std::string_view frame) override;
    void ended(SocketId socket) override;

    void readOn(SocketId socket);
    void tickLater();
    void takeFigures();

    Parts parts_;
    SimClock clock_;
    NullLog log_;
    std::unique_ptr<Process> process_;
};

template <class T>
void SimServer::call(std::function<PairingResult<T>(PairingService&, Store&, Instant)> work,
                     std::function<void(std::optional<std::expected<T, PairingRefusal>>)> then) {
    if (!process_) return then(std::nullopt);
    auto answer = std::make_shared<std::optional<std::expected<T, PairingRefusal>>>();
    process_->queue.submit(
        [this, answer, work = std::move(work)](Store& store) -> StoreResult<void> {
            auto result = work(process_->pairing, store, clock_.now());
            if (!result) return std::unexpected(std::move(result.error()));
            *answer = std::move(*result);
            return {};
        },
        [answer, then = std::move(then)](const StoreResult<void>& done) {
            then(done ? std::move(*answer) : std::nullopt);
        });
}

} // namespace lumaro::simulation
