// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/TransactionalStore.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace lumaro {

/// The store in memory. What a transaction has changed is undone by `rollBack`, which is also what a crash before the
/// commit does. Without a transaction every call is durable at once.
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
    StoreResult<std::optional<MediaRecord>> media(std::string_view coupleId, const UUID& id) override;
    StoreResult<std::size_t> mediaBytes(std::string_view coupleId) override;
    StoreResult<void> putMedia(std::string_view coupleId, const UUID& id, const MediaRecord& record,
                               std::string_view bytes, Instant at) override;
    StoreResult<std::optional<std::string>> readMedia(std::string_view coupleId, const UUID& id) override;
    StoreResult<bool> sweep(Instant now) override;

private:
    struct Couple {
        CoupleRecord record;
        Board board;
        std::int64_t version = 0;
        Members members;
        LastSeen lastSeen;
    };
    struct Batch {
        std::uint64_t place = 0; ///< in the order of commits
        Instant at;
    };
    struct Medium {
        MediaRecord record;
        std::string bytes;
        std::optional<Instant> unnamedSince;
    };
    using OfCouple = std::pair<std::string, UUID>;

    StoreResult<void> failing(std::string_view call) const;
    const Couple* find(std::string_view coupleId) const;
    std::vector<UUID> recentBatches(const std::string& coupleId) const;
    void storeChange(const std::string& coupleId, Board& board, const BoardChange& change, Instant at);
    void noteNamedMedia(const std::string& coupleId, const std::set<UUID>& before, const Board& after, Instant at);
    void removeCouple(const std::string& coupleId);

    /// Changes a table so that the change can be undone; nothing stands for no entry. The arguments may be parts of the
    /// table.
    template <class Table>
    void put(Table& table, typename Table::key_type key, std::optional<typename Table::mapped_type> value);
    template <class Table, class Goes>
    void removeWhere(Table& table, Goes goes);

    std::map<std::string, Couple, std::less<>> couples_;
    std::map<OfCouple, Batch> batches_;
    std::map<OfCouple, Instant> buried_; ///< when tombstones were stored
    std::map<std::string, LinkRecord, std::less<>> links_;
    std::map<std::string, CodeRecord, std::less<>> codes_;
    std::map<std::uint64_t, std::pair<std::string, Instant>> wrongCodes_;
    std::map<OfCouple, Medium> media_;

    std::uint64_t nextPlace_ = 0;
    bool isInTransaction_ = false;
    std::vector<std::move_only_function<void()>> undo_;
    Fault fault_;
};

} // namespace lumaro
