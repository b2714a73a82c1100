// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Log.h"
#include "LumaroRoom/Sqlite/BoardTables.h"
#include "LumaroRoom/Sqlite/Database.h"
#include "LumaroRoom/Sqlite/Journal.h"
#include "LumaroRoom/Store/TransactionalStore.h"
#include "Platform/Posix/FolderLock.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lumaro {

/// The store in one SQLite file, as its only writer: a lock on the file's name plus ".lock" keeps every other process
/// from opening it, while readers (`Maintenance`) may come at any time. What a transaction has committed is on the disk
/// (write-ahead log, synchronised at every commit). Commits of boards go into a journal first (`Journal`), and from
/// there into the tables of their boards when a couple's have piled up, when its board is read, and when the store is
/// closed.
class SqliteStore final : public TransactionalStore {
public:
    struct Limits {
        /// The file does not grow beyond this: what does not fit is `noSpace`. None when the disk alone is the limit.
        std::optional<std::int64_t> maxBytes;
    };

    /// Opens the database, or makes it, and brings its tables up to date. The log outlives the store.
    [[nodiscard]] static StoreResult<std::unique_ptr<SqliteStore>> open(const std::string& path, Log& log,
                                                                        Limits limits = {});
    ~SqliteStore() override;

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
    StoreResult<CoverOutcome> putCover(std::string_view coupleId, const UUID& id, std::string_view bytes, Instant at,
                                       std::size_t limit) override;
    StoreResult<std::optional<std::string>> readCover(std::string_view coupleId, const UUID& id, Instant at) override;
    StoreResult<bool> sweep(Instant now) override;

private:
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    SqliteStore(FolderLock lock, Database database, Log& log);

    /// A couple as this process knows it.
    struct Known {
        std::int64_t number = 0;  ///< by which the tables name it
        std::int64_t version = 0; ///< with the steps that wait in the journal
    };

    /// Null when there is no such couple; valid until the next call.
    StoreResult<Known*> known(std::string_view coupleId);
    StoreResult<std::optional<std::int64_t>> numberOf(std::string_view coupleId);
    /// An error when there is no such couple.
    StoreResult<std::int64_t> existing(std::string_view coupleId);

    StoreResult<void> recover();
    StoreResult<void> checkpoint(std::int64_t couple);
    StoreResult<void> fileWhatIsDue();
    StoreResult<void> fileEach(const std::vector<std::int64_t>& couples);
    void forgetUnreadable(SlotNames& names);
    StoreResult<void> loadDevices(std::int64_t couple, Members& members);
    StoreResult<void> useCover(std::int64_t couple, const UUID& id, Instant at);
    StoreResult<void> makeRoomForCover(std::int64_t couple, std::size_t bytes, std::size_t limit);
    StoreResult<std::int64_t> fileWhatIsOld(Instant now);
    StoreResult<std::int64_t> sweepBatches(Instant takenBefore);
    StoreResult<bool> sweepCouples(Instant now);

    FolderLock lock_;
    Database database_;
    BoardTables boards_{database_};
    Journal journal_{database_};
    Log& log_;
    std::unordered_map<std::string, Known, TextHash, std::equal_to<>> known_;
    bool isRecovered_ = false;
    std::int64_t lastSwept_ = 0; ///< the couple whose batches were looked through last
};

} // namespace lumaro
