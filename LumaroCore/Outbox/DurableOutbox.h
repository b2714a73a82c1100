// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Outbox/OutboxBatch.h"
#include "LumaroCore/Support/JsonError.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <expected>
#include <functional>
#include <limits>
#include <string>
#include <variant>
#include <vector>

namespace lumaro {

/// Why a batch was not stored: the disk, or a batch that has no JSON.
using OutboxError = std::variant<FileError, EncodeError>;

/// The batches that the room has not acknowledged, one file each in a folder of the couple's.
///
/// A batch that `append` has returned survives a crash and a loss of power; one that it refused leaves no trace. It is
/// owned by the sync client and used from its thread alone. One process owns a folder.
class DurableOutbox {
public:
    /// Makes the folder if it is missing and reads what it holds. The ports outlive the outbox.
    static FileResult<DurableOutbox> open(FileSystem& files, UUIDSource& ids, std::string directory);

    const std::string& directory() const { return directory_; }
    /// What waits, in the order of sequences.
    const std::deque<OutboxBatch>& pending() const { return batches_; }
    std::size_t count() const { return batches_.size(); }
    bool isEmpty() const { return batches_.empty(); }
    bool contains(const UUID& batchId) const;
    /// The sequence of the next batch: one more than the largest ever seen, and never used twice in a run. At
    /// `endOfSequences` every batch is refused, with `FileFault::other`.
    std::int64_t nextSequence() const { return nextSequence_; }
    /// Files that could not be read when the folder was, and are gone.
    std::size_t lostFiles() const { return lostFiles_; }

    /// Stores the batch under the next sequence, and answers with it as stored.
    [[nodiscard]] std::expected<OutboxBatch, OutboxError> append(OutboxBatch batch);
    [[nodiscard]] std::expected<OutboxBatch, OutboxError> append(std::vector<Op> ops, const UUID& batchId,
                                                                 Instant createdAt);

    /// Lets go of the batch and its file; an id that is not held changes nothing. After a fault the batch is gone from
    /// memory, and its file may be sent once more after a restart, which the room knows.
    [[nodiscard]] FileResult<void> markAcked(const UUID& batchId);
    /// Deletes the files of all batches; ends at the first fault, with the batches left whose files are.
    [[nodiscard]] FileResult<void> removeAll();
    /// Reads the folder again, as at the start.
    [[nodiscard]] FileResult<void> reload();

    /// No batch has this sequence, so that there always is a next one to name.
    static constexpr std::int64_t endOfSequences = std::numeric_limits<std::int64_t>::max();

private:
    DurableOutbox(FileSystem& files, UUIDSource& ids, std::string directory)
        : files_(files), ids_(ids), directory_(std::move(directory)) {}

    std::string pathOf(const std::string& name) const { return directory_ + "/" + name; }
    FileResult<std::string> readPatiently(const std::string& path);
    FileResult<void> store(const std::string& name, std::string_view bytes);
    FileResult<void> removeIfThere(const OutboxBatch& batch);

    std::reference_wrapper<FileSystem> files_;
    std::reference_wrapper<UUIDSource> ids_;
    std::string directory_;
    std::deque<OutboxBatch> batches_;
    std::int64_t nextSequence_ = 0;
    std::size_t lostFiles_ = 0;
};

} // namespace lumaro
