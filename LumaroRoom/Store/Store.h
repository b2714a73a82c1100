// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/Records.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// Why a store did not do what it was asked.
enum class StoreFault : std::uint8_t {
    other,
    notFound,    ///< there is no database there
    inUse,       ///< another process has the database
    newerSchema, ///< written by a newer program
    notOurs,     ///< no database, or another program's
    damaged,     ///< what is stored breaks the rules of the engine, or ours
    noSpace,
    denied,
};

/// The store did not do what it was asked; the transaction around the call is undone.
struct StoreError {
    std::string message; ///< for the log
    StoreFault fault = StoreFault::other;
};

template <class T>
using StoreResult = std::expected<T, StoreError>;

/// Batch ids and tombstones are kept this long: a device may come back after a year.
inline constexpr std::chrono::days batchLifetime{400};
/// Batch ids that a room keeps in memory.
inline constexpr std::size_t recentBatchCount = 256;
/// Wrong codes, and codes that have expired, are kept this long.
inline constexpr std::chrono::days codeMemory{1};
/// Links that have expired, media that nothing names, covers that nobody uses and couples without a device are kept
/// this long.
inline constexpr std::chrono::days graceTime{30};
/// Reading a cover counts as use when its last use is longer ago than this, so that reading seldom writes.
inline constexpr std::chrono::hours coverUseTime{1};
/// A cover weighs so many bytes at least, so that a couple's are few, however small they are.
inline constexpr std::size_t minCoverWeight = 4096;

/// What came of a cover that was put.
enum class CoverOutcome : std::uint8_t {
    stored,
    isThere,    ///< these bytes were there under this id
    otherBytes, ///< others were; they stay, and nothing was stored
};

/// Everything that outlives the process, keyed by couple. Every call happens inside a transaction that a `StoreQueue`
/// opens and commits; what a call wrote, the calls after it read. Used by one thread at a time.
///
/// Calls on a couple that does not exist answer with nothing and change nothing, but for those that put something up
/// for it: they are errors. Instants are kept to the microsecond, but an item is kept as its JSON.
class Store {
public:
    Store() = default;
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    virtual ~Store() = default;

    // Rooms

    /// None when there is no such couple. An item that this version cannot read is logged and left off the board; it
    /// stays in the store until it is replaced or deleted.
    virtual StoreResult<std::optional<RoomRecord>> loadRoom(std::string_view coupleId) = 0;
    /// What is removed goes before what is upserted comes: an item that is both comes last. A batch that was taken
    /// before is `duplicateBatch` whatever version is expected.
    virtual StoreResult<CommitOutcome> commit(const Commit& commit) = 0;
    virtual StoreResult<void> setLastSeen(std::string_view coupleId, PartnerID slot, Instant at) = 0;
    virtual StoreResult<LastSeen> lastSeen(std::string_view coupleId) = 0;

    // Couples and their devices

    /// A new couple with an empty board, last changed when the couple was created; an error when the id is taken.
    virtual StoreResult<void> createCouple(const CoupleRecord& couple) = 0;
    virtual StoreResult<std::optional<CoupleRecord>> couple(std::string_view coupleId) = 0;
    /// Devices come in the order of their ids.
    virtual StoreResult<Members> members(std::string_view coupleId) = 0;
    virtual StoreResult<void> setName(std::string_view coupleId, PartnerID slot, std::optional<std::string> name) = 0;
    /// Puts the device on the board, in place of the record it had there; the couple is not empty any more.
    virtual StoreResult<void> putDevice(std::string_view coupleId, const DeviceRecord& device) = 0;
    /// Takes the device off; one that is not on the board changes nothing. When it was the last one, the couple is
    /// empty since `at`.
    virtual StoreResult<void> removeDevice(std::string_view coupleId, std::string_view deviceId, Instant at) = 0;

    // Ways in

    virtual StoreResult<void> putLink(const LinkRecord& link) = 0;
    virtual StoreResult<std::optional<LinkRecord>> link(std::string_view inviteId) = 0;
    /// The couple's link that is neither replaced nor expired; the one that lives longest when there are several.
    virtual StoreResult<std::optional<LinkRecord>> currentLink(std::string_view coupleId, Instant now) = 0;
    /// Every link of the couple counts as replaced.
    virtual StoreResult<void> replaceLinks(std::string_view coupleId) = 0;
    /// Puts the code up and ends the couple's other codes. A code of another couple with the same digits is replaced
    /// when it is used or expired at `now`; false, and nothing is changed, when it is alive.
    virtual StoreResult<bool> putCode(const CodeRecord& code, Instant now) = 0;
    virtual StoreResult<std::optional<CodeRecord>> code(std::string_view digits) = 0;
    virtual StoreResult<void> useCode(std::string_view digits) = 0;

    // Wrong codes, by where they came from

    virtual StoreResult<void> addWrongCode(std::string_view origin, Instant at) = 0;
    /// Wrong codes at `since` and later: of this origin, and of all.
    struct WrongCodes {
        std::size_t ofOrigin = 0;
        std::size_t ofAll = 0;
    };
    virtual StoreResult<WrongCodes> wrongCodes(std::string_view origin, Instant since) = 0;

    // Media

    struct MediaRecord {
        std::size_t bytes = 0;
        std::array<std::uint8_t, 32> digest{}; ///< SHA-256
        std::string contentType;
    };
    virtual StoreResult<std::optional<MediaRecord>> media(std::string_view coupleId, const UUID& id) = 0;
    virtual StoreResult<std::size_t> mediaBytes(std::string_view coupleId) = 0;
    /// Media are written once: what is there under this id stays.
    virtual StoreResult<void> putMedia(std::string_view coupleId, const UUID& id, const MediaRecord& record,
                                       std::string_view bytes, Instant at) = 0;
    virtual StoreResult<std::optional<std::string>> readMedia(std::string_view coupleId, const UUID& id) = 0;

    // Covers of the music that a couple plays: JPEGs, apart from the board's media

    /// Covers are written once; putting one that is there counts as use. For a new one those used longest ago go, until
    /// all weigh `limit` at most or it is the only one.
    virtual StoreResult<CoverOutcome> putCover(std::string_view coupleId, const UUID& id, std::string_view bytes,
                                               Instant at, std::size_t limit) = 0;
    /// Counts as use at this instant (`coverUseTime`).
    virtual StoreResult<std::optional<std::string>> readCover(std::string_view coupleId, const UUID& id,
                                                              Instant at) = 0;

    // Housekeeping

    /// Forgets, in small portions, what has outlived its use: batch ids and tombstones `batchLifetime` after they were
    /// stored, wrong codes a day old, codes a day after they expired, links 30 days after they expired, media that no
    /// item of a board has named for 30 days, covers that were not used for 30 days, couples that have been empty for
    /// 30 days. True when there may be more.
    virtual StoreResult<bool> sweep(Instant now) = 0;
};

} // namespace lumaro
