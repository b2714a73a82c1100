// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Room/Room.h"

#include "LumaroCore/Support/Fatal.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Room/BoardChange.h"
#include "LumaroRoom/Store/Store.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <utility>

namespace lumaro {
namespace {

// What a room says was read from JSON or checked before, so that it has JSON again.
template <class T>
std::string encoded(const T& value) {
    auto text = Wire::encode(value);
    if (!text) fatal("a room's message has no JSON");
    return std::move(*text);
}

template <class Alternative>
SharedText frameOf(Alternative message) {
    return std::make_shared<const std::string>(encoded(ServerMessage{std::move(message)}));
}

SharedText errorFrame(std::string_view code, std::string message) {
    return frameOf(ServerMessage::Error{.code = {std::string{code}}, .message = std::move(message)});
}

void send(RoomStep& step, SocketId socket, SharedText text) {
    step.effects.push_back({RoomEffect::Send{.socket = socket, .text = std::move(text)}});
}

// Names the place but not what stands there: the one who sent it can find it, and nobody else's words come back.
std::string complaint(const DecodeError& error) {
    constexpr std::size_t longestPath = 120;
    if (error.path.size() > longestPath) return "This message cannot be read.";
    return "This message cannot be read, at " + error.path + ".";
}

void append(RoomStep& step, std::vector<RoomEffect> effects) {
    std::ranges::move(effects, std::back_inserter(step.effects));
}

} // namespace

std::vector<RoomEffect> refusal(SocketId socket) {
    const auto text = errorFrame(ServerErrorCode::unauthorized, "This device's token is not accepted any more.");
    return {{RoomEffect::Send{.socket = socket, .text = text}},
            {RoomEffect::Close{.socket = socket, .code = closeUnauthorized, .reason = "token not accepted"}}};
}

Room::Room(std::string coupleId, RoomRecord record)
    : coupleId_(std::move(coupleId)), board_(std::move(record.board)), version_(record.version),
      members_(std::move(record.members)), recent_(std::move(record.recentBatches)) {
    if (recent_.size() > recentBatchCount) {
        recent_.erase(recent_.begin(), recent_.end() - static_cast<std::ptrdiff_t>(recentBatchCount));
    }
}

// The board and its text

const Board& Room::board() {
    wake();
    return board_;
}

const std::string& Room::boardText() {
    if (boardText_.empty()) boardText_ = encoded(board_);
    return boardText_;
}

void Room::rest() {
    if (isResting_) return;
    static_cast<void>(boardText());
    boardText_.shrink_to_fit();
    tombstones_.reserve(board_.tombstones.size());
    for (const auto& [id, deletedAt] : board_.tombstones) tombstones_.push_back({.itemId = id, .deletedAt = deletedAt});
    // Assigning braces would keep the space.
    board_.items = std::vector<BoardItem>{};
    board_.tombstones.clear();
    isResting_ = true;
}

void Room::wake() {
    if (!isResting_) return;
    auto board = Wire::decode<Board>(boardText_);
    if (!board) fatal("a room cannot read its own board");
    board_ = std::move(*board);
    for (const auto& [id, deletedAt] : tombstones_)
        board_.tombstones.emplace_hint(board_.tombstones.end(), id, deletedAt);
    tombstones_ = std::vector<Tombstone>{};
    isResting_ = false;
}

// Who is here

const Room::Socket* Room::find(SocketId socket) const {
    const auto found = std::ranges::find(sockets_, socket, &Socket::id);
    return found == sockets_.end() ? nullptr : &*found;
}

PartnerSet Room::online() const {
    PartnerSet slots;
    for (const auto& socket : sockets_) slots.insert(socket.slot);
    return slots;
}

void Room::forgetPresenceOfAbsent() {
    const auto slots = online();
    for (const auto slot : {PartnerID::a, PartnerID::b}) {
        if (!slots.contains(slot)) presence_[std::to_underlying(slot)] = nullptr;
    }
}

void Room::sendRoster(RoomStep& step, std::optional<SocketId> butTo) {
    SharedText text;
    for (const auto& socket : sockets_) {
        if (socket.id == butTo) continue;
        if (!text) {
            text = frameOf(
                ServerMessage::Roster{.online = online(), .names = members_.names, .paired = members_.paired()});
        }
        send(step, socket.id, text);
    }
}

// The board is by far the largest part, and the same for everyone: its text is put in the place of an empty board's.
void Room::welcome(RoomStep& step, const Socket& socket) {
    auto text = encoded(ServerMessage{ServerMessage::Welcome{.partner = socket.slot,
                                                             .board = {},
                                                             .roster = online(),
                                                             .names = members_.names,
                                                             .paired = members_.paired()}});
    const auto empty = encoded(Board{});
    text.replace(text.find(empty), empty.size(), boardText());
    send(step, socket.id, std::make_shared<const std::string>(std::move(text)));
}

void Room::seat(RoomStep& step, const Seat& seat) {
    const auto* device = members_.findToken(seat.token);
    if (device == nullptr) {
        append(step, refusal(seat.socket));
    } else {
        sockets_.push_back({.id = seat.socket, .slot = device->slot, .token = seat.token});
    }
}

RoomStep Room::join(SocketId socket, const TokenHash& token, Instant now) {
    RoomStep step;
    const auto before = online();
    seat(step, {.socket = socket, .token = token});
    const auto* joined = find(socket);
    if (joined == nullptr) return step;
    welcome(step, *joined);
    if (const auto& text = presence_[std::to_underlying(other(joined->slot))]) send(step, socket, text);
    if (online() != before) sendRoster(step, socket);
    tieThread(step, now);
    return step;
}

RoomStep Room::resume(std::span<const Seat> seats, const LastPresence& presence, Instant now) {
    RoomStep step;
    for (const auto& taken : seats) seat(step, taken);
    presence_ = presence;
    forgetPresenceOfAbsent();
    for (const auto& socket : sockets_) {
        welcome(step, socket);
        if (const auto& text = presence_[std::to_underlying(other(socket.slot))]) send(step, socket.id, text);
    }
    tieThread(step, now);
    return step;
}

void Room::tieThread(RoomStep& step, Instant now) {
    if (board_.threadTiedAt || online() != PartnerSet::both()) return;
    wake();
    board_.threadTiedAt = now;
    boardText_ = std::string{};
    step.commit = commitOf(changeTo(board_), std::nullopt, now);
    const auto text = frameOf(ServerMessage::Thread{.tiedAt = now});
    for (const auto& socket : sockets_) send(step, socket.id, text);
}

RoomStep Room::leave(SocketId socket) {
    RoomStep step;
    const auto before = online();
    std::erase_if(sockets_, [&](const Socket& one) { return one.id == socket; });
    if (online() == before) return step;
    forgetPresenceOfAbsent();
    sendRoster(step, std::nullopt);
    return step;
}

RoomStep Room::membersChanged(Members members) {
    RoomStep step;
    if (members == members_) return step;
    const auto before = std::pair{online(), members_.paired()};
    const bool isRenamed = members.names != members_.names;
    members_ = std::move(members);
    std::erase_if(sockets_, [&](const Socket& socket) {
        const auto* device = members_.findToken(socket.token);
        const bool isAccepted = device != nullptr && device->slot == socket.slot;
        if (!isAccepted) append(step, refusal(socket.id));
        return !isAccepted;
    });
    forgetPresenceOfAbsent();
    if (isRenamed || std::pair{online(), members_.paired()} != before) sendRoster(step, std::nullopt);
    return step;
}

// What they say

void Room::rememberBatch(const UUID& batchId) {
    if (recent_.size() < recentBatchCount) {
        recent_.push_back(batchId);
    } else {
        recent_[oldest_] = batchId;
        oldest_ = (oldest_ + 1) % recentBatchCount;
    }
}

// Every batch is looked for: as two words, an id is compared in place and not by a call.
bool Room::isRemembered(const UUID& batchId) const {
    const auto words = [](const UUID& id) { return std::bit_cast<std::array<std::uint64_t, 2>>(id.bytes); };
    return std::ranges::find(recent_, words(batchId), words) != recent_.end();
}

Commit Room::commitOf(BoardChange change, std::optional<UUID> batchId, Instant now) {
    return {.coupleId = coupleId_,
            .expectedVersion = version_++,
            .batchId = batchId,
            .at = now,
            .change = std::move(change)};
}

RoomStep Room::receive(SocketId socket, std::string_view frame, Instant now, Pace pace) {
    RoomStep step;
    const auto* sender = find(socket);
    if (sender == nullptr || frame == heartbeatAck) return step;
    if (frame == heartbeatFrame) {
        send(step, socket, std::make_shared<const std::string>(heartbeatAck));
        return step;
    }
    if (frame.size() > maxFrameBytes) {
        step.tally.unreadable = 1;
        send(step, socket, errorFrame(ServerErrorCode::limitExceeded, "This message is too large."));
        return step;
    }
    auto message = Wire::decode<ClientMessage>(frame);
    if (!message) {
        step.tally.unreadable = 1;
        send(step, socket, errorFrame(ServerErrorCode::badMessage, complaint(message.error())));
        return step;
    }
    return std::visit(
        Overloaded{[&](ClientMessage::Ops& ops) { return take(*sender, std::move(ops), now); },
                   [&](ClientMessage::Presence& presence) { return take(*sender, std::move(presence), pace); }},
        message->value);
}

RoomStep Room::take(const Socket& sender, ClientMessage::Ops message, Instant now) {
    RoomStep step;
    const auto ack = frameOf(ServerMessage::Ack{message.batchId});
    if (message.ops.size() > BoardSpec::maxOpsPerBatch) {
        // It can never take effect: acknowledged, so that the device lets go of it, and remembered nowhere.
        step.tally.rejectedOps = static_cast<std::uint32_t>(message.ops.size());
        send(step, sender.id, errorFrame(ServerErrorCode::limitExceeded, "A batch holds at most 100 ops."));
        send(step, sender.id, ack);
        return step;
    }
    send(step, sender.id, ack);
    if (isRemembered(message.batchId)) {
        step.tally.duplicates = 1;
        if (!mutant(Mutant::noWelcomeAfterDuplicate)) welcome(step, sender);
        return step;
    }
    wake();
    auto batch = applyBatch(message.ops, board_, now);
    if (!batch.applied.empty()) boardText_ = std::string{};
    rememberBatch(message.batchId);
    step.tally = {.batches = 1, .rejectedOps = static_cast<std::uint32_t>(batch.rejected.size())};
    step.commit = commitOf(std::move(batch.change), message.batchId, now);
    if (!batch.rejected.empty() && !mutant(Mutant::noWelcomeAfterRejection)) welcome(step, sender);
    if (batch.applied.empty() || sockets_.size() == 1) return step;
    if (mutant(Mutant::rejectedOpsRelayed)) batch.applied = message.ops;
    const auto text =
        frameOf(ServerMessage::Ops{.batchId = message.batchId, .author = sender.slot, .ops = std::move(batch.applied)});
    for (const auto& socket : sockets_) {
        if (socket.id != sender.id) send(step, socket.id, text);
    }
    return step;
}

// What the old line of a device that has come back still brings is of before.
bool Room::isNewestOfItsDevice(const Socket& socket) const {
    const auto newest = std::ranges::find(sockets_.rbegin(), sockets_.rend(), socket.token, &Socket::token);
    return newest->id == socket.id;
}

RoomStep Room::take(const Socket& sender, ClientMessage::Presence message, Pace pace) {
    RoomStep step;
    if (pace == Pace::over || !isNewestOfItsDevice(sender)) return step;
    auto& kept = presence_[std::to_underlying(sender.slot)];
    kept = frameOf(ServerMessage::Presence{.from = sender.slot,
                                           .nowPlaying = std::move(message.nowPlaying),
                                           .here = std::move(message.here),
                                           .activity = message.activity,
                                           .zone = std::move(message.zone),
                                           .seen = message.seen});
    for (const auto& socket : sockets_) {
        if (socket.slot != sender.slot) send(step, socket.id, kept);
    }
    return step;
}

} // namespace lumaro
