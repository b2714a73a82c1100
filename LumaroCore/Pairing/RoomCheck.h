// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/ServerAddress.h"
#include "LumaroCore/Support/Fields.h"
#include "LumaroCore/Support/HttpClient.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>

namespace lumaro {

/// What a server says of itself to anybody (P47).
struct RoomCard {
    static constexpr std::string_view path = "room";
    static constexpr std::string_view ours = "lumaro";
    static constexpr std::int64_t version = 1;

    std::string room;
    std::int64_t v = 0; ///< of the protocol

    static constexpr auto fields() { return std::tuple{Field{"room", &RoomCard::room}, Field{"v", &RoomCard::v}}; }
    bool operator==(const RoomCard&) const = default;
};

/// What was found at an address.
enum class RoomFinding : std::uint8_t {
    room,
    newerRoom,   ///< one whose protocol this program does not know
    noRoom,      ///< something else answers
    unwell,      ///< a server answers that it cannot just now
    unreachable, ///< nothing answers, or what does cannot show that it is the one
};

/// Asks a server what it is. `then` hears it once, unless the call is dropped before.
[[nodiscard]] std::unique_ptr<HttpClient::Call> checkRoom(HttpClient& http, const ServerAddress& address,
                                                          std::move_only_function<void(RoomFinding)> then);

} // namespace lumaro
