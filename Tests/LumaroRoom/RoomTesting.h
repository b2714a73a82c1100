// SPDX-License-Identifier: Apache-2.0
#pragma once

// The words of the room's tests: devices, ops and frames by number, and what a room says as short lines.

#include "LumaroCore/Support/EnumNames.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"
#include "LumaroRoom/Room/Room.h"
#include "Samples/Samples.h"

#include <string>
#include <vector>

namespace lumaro::room_testing {

using Lines = std::vector<std::string>;

inline TokenHash tokenOf(std::uint64_t device) {
    TokenHash token{};
    token[0] = static_cast<std::uint8_t>(device);
    return token;
}

/// Devices 1 and 2 are A's, 3 is B's.
inline Members bothPaired() {
    return {.names = {.a = "Ada", .b = {}},
            .devices = {{"laptop", PartnerID::a, tokenOf(1)},
                        {"phone", PartnerID::a, tokenOf(2)},
                        {"tower", PartnerID::b, tokenOf(3)}}};
}

inline Op put(std::uint64_t id, Instant at = samples::noon) {
    BoardItem item;
    item.id = samples::numberedId(id);
    item.createdAt = item.updatedAt = at;
    item.payload = samples::plainNote("hi");
    return {Upsert{std::move(item)}};
}
inline Op takeDown(std::uint64_t id, Instant at = samples::noon) {
    return {Delete{.itemId = samples::numberedId(id), .deletedAt = at}};
}

inline std::string batch(std::uint64_t id, std::vector<Op> ops) {
    return Wire::encode(ClientMessage{ClientMessage::Ops{samples::numberedId(id), std::move(ops)}}).value();
}
inline std::string presence(Activity activity) {
    return Wire::encode(ClientMessage{ClientMessage::Presence{
                            .nowPlaying = {}, .here = {}, .activity = activity, .zone = {}, .seen = {}}})
        .value();
}

inline std::string nameOfSet(PartnerSet slots) {
    return std::string{slots.a ? "a" : ""} + (slots.b ? "b" : "");
}

/// The number that `samples::numberedId` made the id of.
inline std::string numberOf(const UUID& id) {
    std::uint64_t number = 0;
    while (samples::numberedId(number) != id) ++number;
    return std::to_string(number);
}

/// A frame as a line: its type, and what matters of it.
inline std::string lineOf(const std::string& frame) {
    if (frame == heartbeatAck) return frame;
    using Message = ServerMessage;
    const auto message = Wire::decode<Message>(frame).value();
    const auto detail = std::visit(
        Overloaded{[](const Message::Welcome& welcome) {
                       return std::string{nameOf(welcome.partner)} + " " + std::to_string(welcome.board.items.size()) +
                              " items, online " + nameOfSet(welcome.roster);
                   },
                   [](const Message::Roster& roster) { return nameOfSet(roster.online); },
                   [](const Message::Ops& ops) {
                       return std::to_string(ops.ops.size()) + " of " + std::string{nameOf(ops.author)};
                   },
                   [](const Message::Ack& ack) { return numberOf(ack.batchId); },
                   [](const Message::Presence& presence) {
                       return "of " + std::string{nameOf(presence.from)} + " " + std::string{nameOf(presence.activity)};
                   },
                   [](const Message::Calendar&) { return std::string{}; },
                   [](const Message::Thread&) { return std::string{}; },
                   [](const Message::Error& error) { return error.code.raw; }},
        message.value);
    return std::string{message.caseName()} + (detail.empty() ? "" : " " + detail);
}

inline std::string numberOf(SocketId socket) {
    return std::to_string(static_cast<std::uint64_t>(socket));
}

/// What a step wants done, in its order, and "commit" last when it waits for one.
inline Lines told(const RoomStep& step) {
    Lines lines;
    for (const auto& effect : step.effects) {
        std::visit(Overloaded{[&](const RoomEffect::Send& send) {
                                  lines.push_back(numberOf(send.socket) + " " + lineOf(*send.text));
                              },
                              [&](const RoomEffect::Close& close) {
                                  lines.push_back(numberOf(close.socket) + " close " + std::to_string(close.code));
                              }},
                   effect.value);
    }
    if (step.commit) lines.emplace_back("commit");
    return lines;
}

} // namespace lumaro::room_testing
