// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroRoom/Room/Room.h"
#include "LumaroRoom/Store/StoreQueue.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lumaro {

/// The sockets, as a room host reaches them. Calls return at once and do not call the host; a socket that is gone is
/// passed over.
class RoomSockets {
public:
    RoomSockets() = default;
    RoomSockets(const RoomSockets&) = delete;
    RoomSockets& operator=(const RoomSockets&) = delete;
    virtual ~RoomSockets() = default;

    /// Queues a text frame.
    virtual void send(SocketId socket, std::shared_ptr<const std::string> text) = 0;
    /// Closes the socket behind what is queued; the host hears `left` for it sooner or later.
    virtual void close(SocketId socket, int code, std::string_view reason) = 0;
    /// Few enough of the socket's frames wait again, after `RoomHost::wantsMore` was false.
    virtual void resume(SocketId /*socket*/) {}
};

/// Close code of a socket whose room the store failed: its device comes back and sends again what was not acknowledged.
inline constexpr int closeStoreFailed = 1011;

/// The rooms of one shard: brings rooms into memory when someone comes and lets them go when nobody is left, stores
/// their commits, and lets out what they have to say once it is durable. One thread; rooms of one couple live in one
/// host.
///
/// A step whose commit is refused takes the room's memory with it: the room is read from the store again, its sockets
/// are welcomed anew, and every input from that step on is done again, in order. A store that fails ends the room, and
/// so does memory that runs out in the midst of a step: its sockets are closed.
class RoomHost {
public:
    /// All outlive the host.
    RoomHost(StoreQueue& store, RoomSockets& sockets, WallClock& clock, Log& log);
    RoomHost(const RoomHost&) = delete;
    RoomHost& operator=(const RoomHost&) = delete;
    ~RoomHost();

    /// Whether the token opens the couple's room, before a socket is: `then` hears it later, unless the host is gone
    /// by then. No answer tells an unknown couple from a wrong token, by its time neither. An error when the store does
    /// not answer. The room of an accepted token is kept in memory for the socket that comes next.
    void authorize(const std::string& coupleId, TokenHash token, std::move_only_function<void(StoreResult<bool>)> then);

    /// A socket has opened.
    void joined(SocketId socket, const std::string& coupleId, TokenHash token);
    /// A frame of a socket that has joined.
    void received(SocketId socket, std::string_view frame, Pace pace = Pace::within);
    /// A socket is gone.
    void left(SocketId socket);

    /// Whether the socket should be read further: not while `maxWaitingFrames` or `maxWaitingBytes` of it wait for the
    /// store. `RoomSockets::resume` tells when it is time again.
    bool wantsMore(SocketId socket) const;
    static constexpr std::size_t maxWaitingFrames = 64;
    static constexpr std::size_t maxWaitingBytes = std::size_t{1024} * 1024;

    /// Members of this couple may have changed in the store: the room, if it is here, takes them in.
    void refreshMembers(const std::string& coupleId);
    /// Who is online, of a room that may not be here.
    PartnerSet online(const std::string& coupleId) const;

    /// To be called about once a second: rooms without sockets leave memory, and quiet ones rest.
    void tick();
    /// Ticks that a room without sockets is kept for one that comes, and that a room is quiet before it rests.
    static constexpr int ticksKeptEmpty = 2;
    static constexpr int ticksUntilRest = 10;

    struct Figures {
        std::size_t rooms = 0;
        std::size_t sockets = 0;
        std::uint64_t batches = 0; ///< taken since the start
        std::uint64_t duplicates = 0;
        std::uint64_t rejectedOps = 0;
        std::uint64_t unreadable = 0; ///< frames
        std::uint64_t reloads = 0;    ///< rooms built anew after a refused commit
    };
    Figures figures() const;

private:
    struct Input;
    struct Visitor;
    struct Flight;
    struct Hosted;

    Hosted* find(const std::string& coupleId) const;
    Visitor* visitor(SocketId socket) const;
    Hosted& host(const std::string& coupleId);
    void load(Hosted& hosted);
    void loaded(Hosted& hosted, std::optional<RoomRecord> record);
    void reload(Hosted& hosted, CommitOutcome outcome);
    void drop(Hosted& hosted, const StoreError& error);
    void end(Hosted& hosted, std::vector<RoomEffect> (*farewell)(SocketId));

    template <class Step>
    void guarded(Hosted& hosted, Step step);
    void take(Hosted& hosted, Input input);
    void run(Hosted& hosted, Input input);
    RoomStep perform(Hosted& hosted, Input& input);
    void dispatch(Hosted& hosted, Input input, RoomStep step);
    void submit(Hosted& hosted, Commit commit);
    void settle(Hosted& hosted, const StoreResult<void>& done, CommitOutcome outcome);
    void letOut(Hosted& hosted, const Flight& flight);
    void letOut(Hosted& hosted, const RoomEffect& effect);
    void noteProgress(Hosted& hosted, const Input& input);
    void storeGoodbyes(const Hosted& hosted, PartnerSet before);
    void takeMembers(const std::string& coupleId, Members members, std::uint64_t readAs);

    StoreQueue& store_;
    RoomSockets& sockets_;
    WallClock& clock_;
    Log& log_;
    std::unordered_map<std::string, std::shared_ptr<Hosted>> rooms_; // by couple id
    std::unordered_map<SocketId, Hosted*> whereabouts_;
    std::uint64_t reads_ = 0; // numbers the reads of rooms and members, in the order of their submission
    Figures figures_;
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true); // watched by what the store reports to
};

} // namespace lumaro
