// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the room's store holds, as values.

#include "LumaroCore/BoardModel/Board.h"
#include "LumaroCore/Protocol/Partners.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// SHA-256 of a whole token: tokens themselves are stored nowhere.
using TokenHash = std::array<std::uint8_t, 32>;

/// In a time that does not depend on where they differ.
bool equalInConstantTime(const TokenHash& left, const TokenHash& right);

/// A device that is on a board.
struct DeviceRecord {
    std::string deviceId;
    PartnerID slot = PartnerID::a;
    TokenHash token{};

    bool operator==(const DeviceRecord&) const = default;
};

/// Who is on a board. A slot is paired while it has a device.
struct Members {
    SlotNames names;
    std::vector<DeviceRecord> devices;

    PartnerSet paired() const;
    /// Null when no device has it. Takes the same time wherever it is found, and when it is not.
    const DeviceRecord* findToken(const TokenHash& token) const;
    const DeviceRecord* findDevice(std::string_view deviceId) const;

    bool operator==(const Members&) const = default;
};

/// A couple's room as the store holds it.
struct RoomRecord {
    Board board;                     ///< with its tombstones
    std::int64_t version = 0;        ///< counts commits
    std::vector<UUID> recentBatches; ///< the last ones taken, oldest first
    Members members;
};

/// What a commit changes on the board that is stored: first `removed` goes, then `upserted` comes. An item that a batch
/// took down and put up again, at the end of the board, is in both.
struct BoardChange {
    BackgroundID background = BackgroundID::butter;
    std::optional<Instant> threadTiedAt;
    Instant updatedAt;
    std::vector<UUID> removed;       ///< items that leave their places
    std::vector<BoardItem> upserted; ///< items as they are now; a new one comes last on the board, in this order
    std::vector<Tombstone> buried;   ///< tombstones as they are now
    std::vector<UUID> unburied;      ///< items whose tombstone is gone

    bool operator==(const BoardChange&) const = default;
};

/// One step of a room, stored whole or not at all.
struct Commit {
    std::string coupleId;
    std::int64_t expectedVersion = 0; ///< the room's before it; one more afterwards
    std::optional<UUID> batchId;      ///< of the batch that is taken with it, remembered for `batchLifetime`
    Instant at;
    BoardChange change;
};

enum class CommitOutcome : std::uint8_t {
    stored,
    duplicateBatch,  ///< the batch was taken before; nothing was stored
    versionConflict, ///< another node was faster, or the couple is gone; nothing was stored
};

struct CoupleRecord {
    std::string coupleId;
    Instant createdAt;
    std::optional<Instant> emptySince; ///< when its last device left
};

struct LinkRecord {
    std::string inviteId;
    std::string coupleId;
    PartnerID inviter = PartnerID::a;
    Instant expiresAt;
    bool isReplaced = false;

    bool operator==(const LinkRecord&) const = default;
};

struct CodeRecord {
    std::string code;
    std::string coupleId;
    PartnerID inviter = PartnerID::a;
    Instant expiresAt;
    bool isUsed = false; ///< or ended by a newer code

    bool operator==(const CodeRecord&) const = default;
};

/// A slot's last goodbye.
struct LastSeen {
    std::optional<Instant> a;
    std::optional<Instant> b;

    std::optional<Instant>& of(PartnerID slot) { return slot == PartnerID::a ? a : b; }
    const std::optional<Instant>& of(PartnerID slot) const { return slot == PartnerID::a ? a : b; }
};

} // namespace lumaro
