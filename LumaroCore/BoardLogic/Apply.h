// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

namespace lumaro {

/// Why an op did not take effect.
enum class RejectionReason : std::uint8_t {
    stale,            ///< an upsert lost the last-writer rule against the item on the board
    deleted,          ///< an upsert is no newer than its item's tombstone
    itemCapExceeded,  ///< the board is full
    batchCapExceeded, ///< the batch is refused whole
    itemTooLarge,     ///< the item's wire JSON is too large, or there is none
    invalidRotation,
    invalidScale,
};

constexpr std::array<std::string_view, 7> namesOf(RejectionReason) {
    return {"stale",        "deleted",         "itemCapExceeded", "batchCapExceeded",
            "itemTooLarge", "invalidRotation", "invalidScale"};
}

struct RejectedOp {
    std::int64_t index = 0; ///< its place in the batch
    Op op;
    RejectionReason reason = RejectionReason::stale;

    static constexpr auto fields() {
        return std::tuple{Field{"index", &RejectedOp::index}, Field{"op", &RejectedOp::op},
                          Field{"reason", &RejectedOp::reason}};
    }
    bool operator==(const RejectedOp&) const = default;
};

/// A board after a batch. Every op of the batch is in exactly one of the two lists, in batch order.
struct ApplyResult {
    Board board;
    std::vector<RejectedOp> rejected;
    std::vector<Op> applied;

    static constexpr auto fields() {
        return std::tuple{Field{"board", &ApplyResult::board}, Field{"rejected", &ApplyResult::rejected},
                          Field{"applied", &ApplyResult::applied}};
    }
    bool operator==(const ApplyResult&) const = default;
};

/// The rules of the board: pure functions, the same on both devices and in the room. None reads a clock.
namespace BoardLogic {

/// What a batch does to a board. Never fails as a whole: an op that cannot be taken changes nothing and is reported,
/// and the rest still applies; only a batch over the cap is refused whole. Move the board in to save the copy.
ApplyResult apply(std::span<const Op> ops, Board board, Instant now);

/// The same in place and without a report, for a batch of which an earlier `apply` found no item that is too large or
/// awry: what a board takes of it may be another part now, and finding that out is some ten times faster.
void reapply(std::span<const Op> ops, Board& board, Instant now);

/// Whether an op is refused for what it is, whatever the board.
constexpr bool isOfTheOp(RejectionReason reason) {
    return reason != RejectionReason::stale && reason != RejectionReason::deleted &&
           reason != RejectionReason::itemCapExceeded;
}

/// The last-writer rule: whether the incoming version of an item replaces the existing one. The later one wins; at
/// equal instants `a` wins over `b`, and a version never replaces itself.
bool wins(Instant incomingAt, PartnerID incomingAuthor, Instant existingAt, PartnerID existingAuthor);

/// Takes down every doodle drawn on an item, leaving tombstones of `date` or later.
void takeDownDoodles(const UUID& itemId, Instant date, Board& board);

} // namespace BoardLogic
} // namespace lumaro
