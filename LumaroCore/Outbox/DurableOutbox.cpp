// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Outbox/DurableOutbox.h"

#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {
namespace {

// A read that fails in passing is tried again, so that it costs nobody an edit.
constexpr int readTries = 3;

bool isBatchName(std::string_view name) {
    return !name.starts_with('.') && name.ends_with(".json");
}

bool mayPass(FileFault fault) {
    return fault == FileFault::inOut || fault == FileFault::interrupted;
}

} // namespace

FileResult<DurableOutbox> DurableOutbox::open(FileSystem& files, UUIDSource& ids, std::string directory) {
    DurableOutbox outbox{files, ids, std::move(directory)};
    if (auto made = files.createDirectories(outbox.directory_); !made) return std::unexpected(std::move(made.error()));
    if (auto read = outbox.reload(); !read) return std::unexpected(std::move(read.error()));
    return outbox;
}

FileResult<std::string> DurableOutbox::readPatiently(const std::string& path) {
    auto bytes = files_.get().readFile(path);
    for (int tries = 1; tries < readTries && !bytes && mayPass(bytes.error().fault); ++tries) {
        bytes = files_.get().readFile(path);
    }
    return bytes;
}

FileResult<void> DurableOutbox::reload() {
    auto names = files_.get().listFiles(directory_);
    if (!names) return std::unexpected(std::move(names.error()));
    // A process may have ended between the rename of a file and the sync of the folder. Its batch counts as accepted
    // from here on, so the name must survive a loss of power.
    if (auto synced = files_.get().syncDirectory(directory_); !synced) return synced;
    std::vector<OutboxBatch> read;
    std::size_t lost = 0;
    for (const auto& name : *names) {
        if (!isBatchName(name)) continue;
        const auto bytes = readPatiently(pathOf(name));
        auto batch = bytes ? Wire::decode<OutboxBatch>(*bytes) : std::unexpected(DecodeError{});
        if (batch && batch->sequence < endOfSequences) {
            read.push_back(std::move(*batch));
        } else {
            // It can never be sent; if it cannot even be removed, it is passed over again next time.
            static_cast<void>(files_.get().removeFile(pathOf(name)));
            ++lost;
        }
    }
    std::ranges::sort(read, {}, &OutboxBatch::sequence);
    batches_.assign(std::move_iterator{read.begin()}, std::move_iterator{read.end()});
    nextSequence_ = batches_.empty() || mutant(Mutant::sequencesStartAnew) ? 0 : batches_.back().sequence + 1;
    lostFiles_ = lost;
    return {};
}

bool DurableOutbox::contains(const UUID& batchId) const {
    return std::ranges::find(batches_, batchId, &OutboxBatch::batchId) != batches_.end();
}

// The new file has its name only once it is whole on the disk.
FileResult<void> DurableOutbox::store(const std::string& name, std::string_view bytes) {
    auto& files = files_.get();
    const auto temporary = pathOf("." + ids_.get().next().upperString() + ".tmp");
    const auto path = pathOf(name);
    auto done = files.writeFile(temporary, bytes);
    if (done) done = files.syncFile(temporary);
    if (done) done = files.rename(temporary, path);
    if (!done) {
        static_cast<void>(files.removeFile(temporary));
        return done;
    }
    done = files.syncDirectory(directory_);
    // What was refused must not turn up after a restart.
    if (!done) static_cast<void>(files.removeFile(path));
    return done;
}

std::expected<OutboxBatch, OutboxError> DurableOutbox::append(OutboxBatch batch) {
    if (nextSequence_ == endOfSequences) {
        return std::unexpected(OutboxError{FileError{FileFault::other, directory_, "no sequence is left"}});
    }
    // A number is used up even when the batch is then refused: numbers never stand for two batches in one run.
    batch.sequence = nextSequence_++;
    auto bytes = Wire::encode(batch);
    if (!bytes) return std::unexpected(OutboxError{std::move(bytes.error())});
    if (auto stored = store(batch.fileName(), *bytes); !stored) {
        return std::unexpected(OutboxError{std::move(stored.error())});
    }
    batches_.push_back(batch);
    return batch;
}

std::expected<OutboxBatch, OutboxError> DurableOutbox::append(std::vector<Op> ops, const UUID& batchId,
                                                              Instant createdAt) {
    return append({.batchId = batchId, .ops = std::move(ops), .createdAt = createdAt, .sequence = 0});
}

FileResult<void> DurableOutbox::removeIfThere(const OutboxBatch& batch) {
    auto removed = files_.get().removeFile(pathOf(batch.fileName()));
    if (!removed && removed.error().fault == FileFault::notFound) return {};
    return removed;
}

FileResult<void> DurableOutbox::markAcked(const UUID& batchId) {
    auto found = std::ranges::find(batches_, batchId, &OutboxBatch::batchId);
    if (found == batches_.end() || mutant(Mutant::ackKeepsTheBatch)) return {};
    if (mutant(Mutant::ackTakesTheNewest)) found = std::prev(batches_.end());
    const OutboxBatch batch = std::move(*found);
    batches_.erase(found);
    return removeIfThere(batch);
}

FileResult<void> DurableOutbox::removeAll() {
    while (!batches_.empty()) {
        if (auto removed = removeIfThere(batches_.front()); !removed) return removed;
        batches_.pop_front();
    }
    return {};
}

} // namespace lumaro
