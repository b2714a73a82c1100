// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCore/Support/UUID.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <deque>
#include <expected>
#include <string>
#include <vector>

namespace lumaro {

/// What a room did that it must not do.
struct Violation {
    std::string text;
};

/// The edits of one room that are under way, and whether the room keeps its word on them: each is acknowledged to its
/// author once and relayed to the partner once, each in the order of sending, and both sockets hear of all edits in one
/// order.
class Ledger {
public:
    using Clock = std::chrono::steady_clock;
    using Span = std::chrono::nanoseconds;

    void sent(PartnerID by, const UUID& batch, Clock::time_point at);
    /// The span since the batch was sent.
    std::expected<Span, Violation> acked(PartnerID by, const UUID& batch, Clock::time_point at);
    /// The span since its author sent it.
    std::expected<Span, Violation> relayed(PartnerID author, const UUID& batch, Clock::time_point at);

    std::size_t unacked() const;
    /// Every edit sent was acknowledged and relayed.
    bool isSettled() const;
    /// One for each acknowledgement and relay that has not come.
    std::vector<Violation> missing() const;

private:
    struct Sent {
        UUID batch;
        Clock::time_point at;
    };
    struct Side {
        std::deque<Sent> unacked; // sent by this side
        std::deque<Sent> unseen;  // sent by this side, not yet seen by the other
    };
    static std::expected<Span, Violation> take(std::deque<Sent>& waiting, const char* what, const UUID& batch,
                                               Clock::time_point at);
    bool isSameOrder(PartnerID socket, const UUID& batch);

    Side& of(PartnerID side) { return sides_.at(static_cast<std::size_t>(side)); }

    std::array<Side, 2> sides_;
    PartnerID ahead_ = PartnerID::a; // the socket that has heard of more
    std::deque<UUID> lead_;          // what it heard of and the other did not yet
};

} // namespace lumaro
