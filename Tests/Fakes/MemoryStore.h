// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/TransactionalStore.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// The store in memory, without media. What a transaction has changed is undone by `rollBack`, which is also what a
/// crash before the commit does. Without a transaction every call is durable at once.
class MemoryStore final : public TransactionalStore {
public:
    /// Whether the call with this name fails now, with nothing done: that of a method, e.g. "commitTransaction".
    using Fault = std::function<bool(std::string_view call)>;
    void failWhen(Fault fault) { fault_ = std::move(fault); }

    StoreResult<void> beginTransaction() override;
    StoreResult<void> commitTransaction() override;
    void rollBack() override;

    StoreResult<std::optional<RoomRecord>> loadRoom(std::string_view coupleId) override;
    StoreResult<CommitOutcome> commit(const Commit& commit) override;
    StoreResult<void> setLastSeen(std::string_view coupleId, PartnerID slot, Instant at) override;
    StoreResult<LastSeen> lastSeen(std::string_view coupleId) override;
    StoreResult<void> createCouple(const CoupleRecord& couple) override;
    StoreResult<std::optional<CoupleRecord>> couple(std::string_view coupleId) override;
    StoreResult<Members> members(std::string_view coupleId) override;
    StoreResult<void> setName(std::string_view coupleId, PartnerID slot, std::optional<std::string> name) override;
    StoreResult<void> putDevice(std::string_view coupleId, const DeviceRecord& device) override;
    StoreResult<void> removeDevice(std::string_view coupleId, std::string_view deviceId, Instant at) override;
    StoreResult<void> putLink(const LinkRecord& link) override;
    StoreResult<std::optional<LinkRecord>> link(std::string_view inviteId) override;
    StoreResult<std::optional<LinkRecord>> currentLink(std::string_view coupleId, Instant now) override;
    StoreResult<void> replaceLinks(std::string_view coupleId) override;
    StoreResult<bool> putCode(const CodeRecord& code, Instant now) override;
    StoreResult<std::optional<CodeRecord>> code(std::string_view digits) override;
    StoreResult<void> useCode(std::string_view digits) override;
    StoreResult<void> addWrongCode(std::string_view origin, Instant at) override;
    StoreResult<WrongCodes> wrongCodes(std::string_view origin, Instant since) override;
    StoreResult<std::optional<MediaRecord>> media(std::string_view, const UUID&) override { return noMedia(); }
    StoreResult<std::size_t> mediaBytes(std::string_view) override { return noMedia(); }
    StoreResult<void> putMedia(std::string_view, const UUID&, const MediaRecord&, std::string_view, Instant) override {
        return noMedia();
    }
    StoreResult<std::optional<std::string>> readMedia(std::string_view, const UUID&) override { return noMedia(); }
    StoreResult<CoverOutcome> putCover(std::string_view coupleId, const UUID& id, std::string_view bytes, Instant at,
                                       std::size_t limit) override;
    StoreResult<std::optional<std::string>> readCover(std::string_view coupleId, const UUID& id, Instant at) override;
    StoreResult<bool> sweep(Instant now) override;

private:
    struct StoredCover {
        std::string bytes;
        Instant usedAt;
    };
    struct Couple {
        CoupleRecord record;
        Board board;
        std::int64_t version = 0;
        Members members;
        LastSeen lastSeen;
        std::vector<std::pair<UUID, Instant>> batches; ///< in the order of their commits
        std::map<UUID, Instant> buried;                ///< when tombstones were stored
        std::map<UUID, StoredCover> covers;
    };
    struct Tables {
        std::map<std::string, Couple, std::less<>> couples;
        std::map<std::string, LinkRecord, std::less<>> links;
        std::map<std::string, CodeRecord, std::less<>> codes;
        std::vector<std::pair<std::string, Instant>> wrongCodes;
    };

    static std::unexpected<StoreError> noMedia() { return std::unexpected(StoreError{"no media in memory"}); }
    StoreResult<void> failing(std::string_view call) const;
    Couple* find(std::string_view coupleId);
    void removeCouple(const std::string& coupleId);

    Tables tables_;
    std::optional<Tables> before_; ///< as the transaction found them
    Fault fault_;
};

} // namespace lumaro
