// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/Messages.h"
#include "LumaroRoom/Store/Records.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace lumaro {

/// A socket, by a number that is never used twice in a process.
enum class SocketId : std::uint64_t {};

/// A frame's text: one for all the sockets it goes to.
using SharedText = std::shared_ptr<const std::string>;

/// What a room wants done on a socket.
struct RoomEffect {
    struct Send {
        SocketId socket;
        SharedText text;
    };
    struct Close {
        SocketId socket;
        int code = 1000;
        std::string reason;
    };
    std::variant<Send, Close> value;
};

/// How a socket ends whose token is not accepted: "error" `unauthorized` and close code 4401.
std::vector<RoomEffect> refusal(SocketId socket);

/// What became of an input, to be counted.
struct RoomTally {
    std::uint32_t batches = 0; ///< taken
    std::uint32_t duplicates = 0;
    std::uint32_t rejectedOps = 0;
    std::uint32_t unreadable = 0; ///< frames
};

/// What follows from one input: what must be durable first, and what is done once it is.
struct RoomStep {
    std::optional<Commit> commit;
    std::vector<RoomEffect> effects;
    RoomTally tally;
};

/// Whether a socket sends faster than it may.
enum class Pace : std::uint8_t { within, over };

/// A frame over this is not read.
inline constexpr std::size_t maxFrameBytes = std::size_t{4} * 1024 * 1024;

/// One couple's room: pure code, no clock and no store. Its inputs come one at a time, and each answers with a step.
/// The caller carries the steps out in order: effects of a step wait until its commit, and those before it, are
/// durable.
///
/// When a commit is refused the room is dropped and built anew from the store, and what was not durable is done again.
///
/// Ops are taken as they are sent, their items' authors included: rewriting them would part the author's board from the
/// room's, and either person may edit everything anyhow.
class Room {
public:
    Room(std::string coupleId, RoomRecord record);

    const std::string& coupleId() const { return coupleId_; }
    const Members& members() const { return members_; }
    /// Wakes a room that rests.
    const Board& board();
    bool hasSockets() const { return !sockets_.empty(); }
    std::size_t socketCount() const { return sockets_.size(); }
    PartnerSet online() const;

    /// A socket has opened with this token. It is sent a "welcome", the partner's last presence, and a change of the
    /// roster goes to all; the thread is tied when both slots are here for the first time. A token that is not accepted
    /// any more is answered with "error" `unauthorized` and close code 4401.
    RoomStep join(SocketId socket, const TokenHash& token, Instant now);
    /// The socket is gone. One that is not here changes nothing. A slot's presence goes with its last socket.
    RoomStep leave(SocketId socket);
    /// A frame of a socket that is here: the heartbeat, a batch, presence, or something that cannot be read. Presence
    /// goes to the sockets of the other slot; of one who sends too fast it is dropped, and all else is taken.
    RoomStep receive(SocketId socket, std::string_view frame, Instant now, Pace pace = Pace::within);
    /// Someone paired, left or changed their name. Sockets whose token is no longer accepted are told so and closed.
    RoomStep membersChanged(Members members);
    /// A batch id that the store knows and this room's memory does not.
    void rememberBatch(const UUID& batchId);

    struct Seat {
        SocketId socket{};
        TokenHash token{};
    };
    /// Each slot's last presence message, `a` first; none of a slot that sent none or is not online.
    using LastPresence = std::array<SharedText, 2>;
    const LastPresence& lastPresence() const { return presence_; }
    /// Takes over the sockets of a room that was dropped: each is welcomed anew, as nobody knows how far it came.
    RoomStep resume(std::span<const Seat> seats, const LastPresence& presence, Instant now);

    /// Keeps the board as text, in about half the space, until it is next needed. Joining does not need it.
    void rest();
    bool isResting() const { return isResting_; }

private:
    struct Socket {
        SocketId id;
        PartnerID slot;
        TokenHash token;
    };

    void wake();
    const std::string& boardText();
    const Socket* find(SocketId socket) const;
    bool isRemembered(const UUID& batchId) const;
    bool isNewestOfItsDevice(const Socket& socket) const;
    Commit commitOf(BoardChange change, std::optional<UUID> batchId, Instant now);

    RoomStep take(const Socket& sender, ClientMessage::Ops message, Instant now);
    RoomStep take(const Socket& sender, ClientMessage::Presence message, Pace pace);
    void tieThread(RoomStep& step, Instant now);

    void seat(RoomStep& step, const Seat& seat);
    void welcome(RoomStep& step, const Socket& socket);
    void sendRoster(RoomStep& step, std::optional<SocketId> butTo);
    void forgetPresenceOfAbsent();

    std::string coupleId_;
    Board board_;                       // without items and tombstones while the room rests
    std::string boardText_;             // the board's JSON; empty when that is not known
    std::vector<Tombstone> tombstones_; // the board's, while the room rests
    bool isResting_ = false;
    std::int64_t version_ = 0;
    Members members_;
    std::vector<Socket> sockets_;
    LastPresence presence_;
    std::vector<UUID> recent_; // batches, a ring once it is full
    std::size_t oldest_ = 0;   // in the ring
};

} // namespace lumaro
