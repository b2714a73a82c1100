// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/DurableOutbox.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroCore/SyncClient/ReconnectBackoff.h"
#include "LumaroCore/SyncClient/WebSocketTransport.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumaro {

/// Where a device stands with its room.
struct ConnectionState {
    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Connecting {
        bool operator==(const Connecting&) const = default;
    };
    struct Connected {
        bool operator==(const Connected&) const = default;
    };
    /// Between attempts: the one about to be made, and the delay before it.
    struct Waiting {
        std::int64_t attempt = 0;
        Seconds delay{0};
        bool operator==(const Waiting&) const = default;
    };
    struct Stopped {
        bool operator==(const Stopped&) const = default;
    };
    /// The room refused the token; nothing leads out of here.
    struct Rejected {
        bool operator==(const Rejected&) const = default;
    };

    std::variant<Idle, Connecting, Connected, Waiting, Stopped, Rejected> value;

    bool operator==(const ConnectionState&) const = default;
};

/// What became of a batch that was handed to `send`; either way it is on disk.
struct SendOutcome {
    enum class Way : std::uint8_t {
        transmitted, ///< onto an open socket
        queued,      ///< for later: there is no socket, a medium is held, or older batches come first
    };
    Way way = Way::queued;
    OutboxBatch batch; ///< as stored
};

/// The batch has more than `BoardSpec::maxOpsPerBatch` ops; it was not stored.
struct BatchTooLarge {
    std::size_t ops = 0;
};
using SendError = std::variant<BatchTooLarge, FileError, EncodeError>;

/// Keeps a device connected to its couple's room: sends batches through the durable outbox, sends them again on every
/// new connection until the room acknowledges them, and hands on every message in the room's order.
///
/// A state machine without a thread of its own: it is driven by its ports and used on their one thread. Dropping it
/// closes the socket; the outbox's files outlive it.
class SyncClient final : private WebSocketListener {
public:
    struct Configuration {
        Seconds heartbeatInterval{30};
        ReconnectBackoff backoff;
        bool retransmitOnConnect = true;
        /// No further batch is sent again while this much waits for the socket.
        std::size_t sendWindowBytes = std::size_t{256} * 1024;
    };

    /// All outlive the client.
    struct Ports {
        WebSocketTransport& transport;
        HttpClient& http;
        Sleeper& sleeper;
        WallClock& clock;
        Log& log;
    };

    /// The one that uses the client. Called on the client's thread, never from within a call to it other than
    /// `connect`, `disconnect`, `shutdown` and `retryNow`, which announce the state they lead to. It may call the
    /// client from within, but not destroy it.
    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;

        /// A message of the room, in its order. An "ack" has left the outbox by now.
        virtual void received(const ServerMessage& message) = 0;
        virtual void stateChanged(const ConnectionState& state) = 0;
    };

    SyncClient(std::string serverURL, CoupleToken token, std::optional<std::string> deviceId, DurableOutbox outbox,
               Configuration configuration, Ports ports, Listener& listener);
    SyncClient(const SyncClient&) = delete;
    SyncClient& operator=(const SyncClient&) = delete;
    ~SyncClient() override = default;

    const ConnectionState& connectionState() const { return state_; }
    bool isConnected() const { return std::holds_alternative<ConnectionState::Connected>(state_.value); }
    const CoupleToken& token() const { return token_; }
    const CoupleEndpoints& endpoints() const { return endpoints_; }

    /// Starts the connection loop, if none is running; does nothing once the token was refused or the client shut down.
    void connect();
    /// Ends the connection loop and closes the socket.
    void disconnect();
    /// Ends the client for good: it connects no more, and stores what it is given.
    void shutdown();
    /// The network changed or the machine woke: a client that waits tries at once.
    void retryNow();

    /// Stores the batch, and sends it when its turn has come. An error leaves the outbox as it was.
    [[nodiscard]] std::expected<SendOutcome, SendError> send(std::vector<Op> ops, const UUID& batchId);
    /// From now on no batch that names this medium goes onto a line, and none behind such a batch: the room has the
    /// medium before it has the item that shows it. What is on the line already stays there. A component on another
    /// thread posts this ahead of the batch, and the release once the medium is up. What is held is forgotten with the
    /// client: after a restart it is held anew before `connect`.
    void holdMedia(const UUID& id) { heldMedia_.insert(id); }
    /// The medium is in the room, or never will be: what waited for it goes on.
    void releaseMedia(const UUID& id);

    /// Sends what this device lets the partner see of its person; dropped without a connection.
    void sendPresence(const ClientMessage::Presence& presence);
    void sendPresence(std::optional<NowPlaying> nowPlaying, std::optional<Here> here, Activity activity);

    const DurableOutbox& outbox() const { return outbox_; }
    const std::deque<OutboxBatch>& pending() const { return outbox_.pending(); }
    std::size_t pendingCount() const { return outbox_.count(); }

    using SnapshotError = std::variant<LumaroCoreError, HttpFailure, DecodeError>;
    /// Fetches the room's whole board; `BadServerResponse` for any status but success. Dropping the call cancels it.
    [[nodiscard]] std::unique_ptr<HttpClient::Call>
    snapshot(std::move_only_function<void(std::expected<Board, SnapshotError>)> then);

private:
    void opened() override;
    void received(std::string_view bytes) override;
    void writable() override;
    void ended(WebSocketEnd end) override;

    void attempt();
    void attemptLater();
    void refused(int status);
    void askWhetherRefused();
    void reject(const ServerMessage::Error& why);
    void lineClosed();
    void lineEnded(std::string_view why);
    void dropLine();
    void enter(ConnectionState state);

    void beatLater();
    void watchForSilence();
    void settle(const UUID& batchId);
    void transmitWaiting();
    bool isHeld(const OutboxBatch& batch) const;

    std::vector<HttpHeader> authorization() const;
    HttpRequest snapshotRequest() const;
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "sync", message); }

    CoupleToken token_;
    CoupleEndpoints endpoints_;
    std::optional<std::string> deviceId_;
    DurableOutbox outbox_;
    Configuration configuration_;
    ReconnectBackoff backoff_;
    Ports ports_;
    Listener& listener_;

    ConnectionState state_;
    bool isShutDown_ = false;
    /// How many batches, of the oldest, this connection has no more to send; 0 without one.
    std::size_t onTheWire_ = 0;
    std::set<UUID> heldMedia_;

    // What is under way; each is dropped with the state that it belongs to.
    std::unique_ptr<WebSocketConnection> connection_;
    std::unique_ptr<Sleeper::Wait> heartbeat_;
    std::unique_ptr<Sleeper::Wait> silence_;
    std::unique_ptr<HttpClient::Call> inquiry_;
    std::unique_ptr<Sleeper::Wait> retry_;
};

} // namespace lumaro
