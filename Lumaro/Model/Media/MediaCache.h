// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaFault.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Support/UUID.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// The pictures that this device holds: one file each in a folder, named by its id. Past its limit those used least
/// recently go, but never one that waits to go up to the room.
///
/// A picture that `put` took survives a loss of power, and so does the mark of one that waits: an empty file named by
/// the id, a full stop and the couple's id. The order of use is kept in the file "index"; without it, files count as
/// old and as large as they may be.
///
/// Used from any thread. `put`, `putForUpload`, `read`, `uploaded`, `forget` and `flush` wait for the disk and for one
/// another; the rest waits for nothing. One process owns a folder.
class MediaCache {
public:
    static constexpr std::uint64_t defaultLimit = std::uint64_t{512} * 1024 * 1024;

    /// Looks into the folder, which is made with the first picture. The files outlive the cache.
    MediaCache(FileSystem& files, std::string folder, std::uint64_t limitBytes = defaultLimit);
    MediaCache(const MediaCache&) = delete;
    MediaCache& operator=(const MediaCache&) = delete;
    ~MediaCache() = default;

    /// Why it could not look into its folder, so that it knows nothing of what is there.
    const std::optional<FileError>& fault() const { return fault_; }

    /// Takes in a picture. An id that is held already keeps its bytes: a medium is written once.
    [[nodiscard]] std::expected<void, MediaError> put(const UUID& id, std::string_view bytes);
    /// The same for a picture that is to go up to the couple's room: it waits, also after a restart, until `uploaded`.
    [[nodiscard]] std::expected<void, MediaError> putForUpload(const UUID& id, std::string_view bytes,
                                                               std::string_view coupleId);
    /// The picture's bytes; counts as use.
    [[nodiscard]] FileResult<std::string> read(const UUID& id);

    /// The picture waits no longer. After a fault it will again after a restart.
    [[nodiscard]] FileResult<void> uploaded(const UUID& id);
    /// Nothing waits for the room of this couple any more.
    void forget(std::string_view coupleId);
    /// What waits for the couple's room, in the order of ids.
    std::vector<UUID> waitingFor(std::string_view coupleId) const;

    bool has(const UUID& id) const;
    /// Where the picture's file is. It may be gone by the time it is opened.
    std::optional<std::string> pathOf(const UUID& id) const;
    /// Counts as use.
    void touch(const UUID& id);
    std::uint64_t bytes() const;

    /// Writes down the order of use, as each `put` does.
    void flush();

private:
    struct Entry {
        std::uint64_t size = 0;
        std::uint64_t used = 0; ///< grows with every use of any picture
    };
    using Disk = std::scoped_lock<std::mutex>;
    using Index = std::scoped_lock<std::mutex>;

    std::expected<void, MediaError> store(const Disk& disk, const UUID& id, std::string_view bytes);
    void makeRoom(const Disk& disk, const UUID& newest);
    std::optional<UUID> takeOldest(const UUID& newest);
    void meet(const std::string& name);
    void readOrder();
    void writeOrder(const Disk& disk);
    std::string pathOfName(const std::string& name) const { return folder_ + "/" + name; }

    FileSystem& files_;
    std::string folder_;
    std::uint64_t limit_;
    std::optional<FileError> fault_;

    std::mutex diskMutex_;          ///< held over what is done with files; taken before the other
    mutable std::mutex indexMutex_; ///< held for moments, over what follows
    std::map<UUID, Entry> entries_;
    std::map<UUID, std::string> waiting_; ///< for the room of which couple
    std::uint64_t total_ = 0;
    std::uint64_t uses_ = 0;
};

} // namespace lumaro
