// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/MemoryStore.h"

#include "LumaroCore/Support/Fatal.h"

#include <algorithm>

namespace lumaro {
namespace {

std::unexpected<StoreError> failure(std::string message) {
    return std::unexpected(StoreError{std::move(message)});
}

void change(Board& board, const BoardChange& change) {
    board.background = change.background;
    board.threadTiedAt = change.threadTiedAt;
    board.updatedAt = change.updatedAt;
    for (const auto& id : change.removed) std::erase_if(board.items, [&](const auto& item) { return item.id == id; });
    for (const auto& item : change.upserted) {
        const auto place = std::ranges::find(board.items, item.id, &BoardItem::id);
        if (place == board.items.end()) {
            board.items.push_back(item);
        } else {
            *place = item;
        }
    }
    for (const auto& id : change.unburied) board.tombstones.erase(id);
    for (const auto& tombstone : change.buried) board.tombstones[tombstone.itemId] = tombstone.deletedAt;
}

// A copy of an entry, nothing where there is none.
template <class Table, class Key>
std::optional<typename Table::mapped_type> entryOf(const Table& table, const Key& key) {
    const auto found = table.find(key);
    return found == table.end() ? std::nullopt : std::optional{found->second};
}

} // namespace

StoreResult<void> MemoryStore::failing(std::string_view call) const {
    if (fault_ && fault_(call)) return failure(std::string{call} + " fails as the test wants it");
    return {};
}

StoreResult<void> MemoryStore::beginTransaction() {
    if (before_) fatal("a transaction within another");
    before_ = tables_;
    return {};
}

StoreResult<void> MemoryStore::commitTransaction() {
    auto done = failing("commitTransaction");
    if (!done) rollBack();
    before_.reset();
    return done;
}

void MemoryStore::rollBack() {
    if (before_) tables_ = *std::exchange(before_, std::nullopt);
}

MemoryStore::Couple* MemoryStore::find(std::string_view coupleId) {
    const auto found = tables_.couples.find(coupleId);
    return found == tables_.couples.end() ? nullptr : &found->second;
}

// Rooms

StoreResult<std::optional<RoomRecord>> MemoryStore::loadRoom(std::string_view coupleId) {
    if (auto failed = failing("loadRoom"); !failed) return std::unexpected(failed.error());
    const auto* couple = find(coupleId);
    if (couple == nullptr) return std::nullopt;
    RoomRecord room{couple->board, couple->version, {}, couple->members};
    const auto& batches = couple->batches;
    for (auto i = batches.size() - std::min(batches.size(), recentBatchCount); i < batches.size(); ++i) {
        room.recentBatches.push_back(batches[i].first);
    }
    return room;
}

StoreResult<CommitOutcome> MemoryStore::commit(const Commit& commit) {
    if (auto failed = failing("commit"); !failed) return std::unexpected(failed.error());
    auto* couple = find(commit.coupleId);
    if (couple == nullptr) return CommitOutcome::versionConflict;
    const auto isTaken = [&](const auto& batch) { return batch.first == commit.batchId; };
    if (std::ranges::any_of(couple->batches, isTaken)) return CommitOutcome::duplicateBatch;
    if (couple->version != commit.expectedVersion) return CommitOutcome::versionConflict;
    ++couple->version;
    if (commit.batchId) couple->batches.emplace_back(*commit.batchId, commit.at);
    change(couple->board, commit.change);
    for (const auto& id : commit.change.unburied) couple->buried.erase(id);
    for (const auto& tombstone : commit.change.buried) couple->buried[tombstone.itemId] = commit.at;
    return CommitOutcome::stored;
}

StoreResult<void> MemoryStore::setLastSeen(std::string_view coupleId, PartnerID slot, Instant at) {
    if (auto* couple = find(coupleId)) couple->lastSeen.of(slot) = at;
    return {};
}

StoreResult<LastSeen> MemoryStore::lastSeen(std::string_view coupleId) {
    const auto* couple = find(coupleId);
    return couple == nullptr ? LastSeen{} : couple->lastSeen;
}

// Couples and their devices

StoreResult<void> MemoryStore::createCouple(const CoupleRecord& couple) {
    if (auto failed = failing("createCouple"); !failed) return failed;
    const auto [place, isNew] = tables_.couples.try_emplace(couple.coupleId);
    if (!isNew) return failure("the couple exists");
    place->second.record = couple;
    place->second.board.updatedAt = couple.createdAt;
    return {};
}

StoreResult<std::optional<CoupleRecord>> MemoryStore::couple(std::string_view coupleId) {
    const auto* couple = find(coupleId);
    return couple == nullptr ? std::nullopt : std::optional{couple->record};
}

StoreResult<Members> MemoryStore::members(std::string_view coupleId) {
    if (auto failed = failing("members"); !failed) return std::unexpected(failed.error());
    const auto* couple = find(coupleId);
    return couple == nullptr ? Members{} : couple->members;
}

StoreResult<void> MemoryStore::setName(std::string_view coupleId, PartnerID slot, std::optional<std::string> name) {
    if (auto* couple = find(coupleId)) couple->members.names.of(slot) = std::move(name);
    return {};
}

StoreResult<void> MemoryStore::putDevice(std::string_view coupleId, const DeviceRecord& device) {
    auto* couple = find(coupleId);
    if (couple == nullptr) return failure("a device of no couple");
    auto& devices = couple->members.devices;
    std::erase_if(devices, [&](const auto& other) { return other.deviceId == device.deviceId; });
    devices.insert(std::ranges::upper_bound(devices, device.deviceId, {}, &DeviceRecord::deviceId), device);
    couple->record.emptySince = std::nullopt;
    return {};
}

StoreResult<void> MemoryStore::removeDevice(std::string_view coupleId, std::string_view deviceId, Instant at) {
    auto* couple = find(coupleId);
    if (couple == nullptr) return {};
    auto& devices = couple->members.devices;
    const auto gone = std::erase_if(devices, [&](const auto& device) { return device.deviceId == deviceId; });
    if (gone > 0 && devices.empty()) couple->record.emptySince = at;
    return {};
}

// Ways in

StoreResult<void> MemoryStore::putLink(const LinkRecord& link) {
    if (find(link.coupleId) == nullptr) return failure("a link of no couple");
    tables_.links.insert_or_assign(link.inviteId, link);
    return {};
}

StoreResult<std::optional<LinkRecord>> MemoryStore::link(std::string_view inviteId) {
    return entryOf(tables_.links, inviteId);
}

StoreResult<std::optional<LinkRecord>> MemoryStore::currentLink(std::string_view coupleId, Instant now) {
    std::optional<LinkRecord> current;
    for (const auto& [id, link] : tables_.links) {
        const bool isAlive = link.coupleId == coupleId && !link.isReplaced && link.expiresAt > now;
        if (isAlive && (!current || link.expiresAt > current->expiresAt)) current = link;
    }
    return current;
}

StoreResult<void> MemoryStore::replaceLinks(std::string_view coupleId) {
    for (auto& [id, link] : tables_.links) link.isReplaced = link.isReplaced || link.coupleId == coupleId;
    return {};
}

StoreResult<bool> MemoryStore::putCode(const CodeRecord& code, Instant now) {
    if (find(code.coupleId) == nullptr) return failure("a code of no couple");
    const auto taken = entryOf(tables_.codes, code.code);
    if (taken && taken->coupleId != code.coupleId && !taken->isUsed && taken->expiresAt > now) return false;
    for (auto& [digits, other] : tables_.codes) other.isUsed = other.isUsed || other.coupleId == code.coupleId;
    tables_.codes.insert_or_assign(code.code, code);
    return true;
}

StoreResult<std::optional<CodeRecord>> MemoryStore::code(std::string_view digits) {
    return entryOf(tables_.codes, digits);
}

StoreResult<void> MemoryStore::useCode(std::string_view digits) {
    if (const auto found = tables_.codes.find(digits); found != tables_.codes.end()) found->second.isUsed = true;
    return {};
}

StoreResult<void> MemoryStore::addWrongCode(std::string_view origin, Instant at) {
    tables_.wrongCodes.emplace_back(origin, at);
    return {};
}

StoreResult<Store::WrongCodes> MemoryStore::wrongCodes(std::string_view origin, Instant since) {
    WrongCodes counts;
    for (const auto& [from, at] : tables_.wrongCodes) {
        if (at < since) continue;
        ++counts.ofAll;
        if (from == origin) ++counts.ofOrigin;
    }
    return counts;
}

// Covers

StoreResult<CoverOutcome> MemoryStore::putCover(std::string_view coupleId, const UUID& id, std::string_view bytes,
                                                Instant at, std::size_t limit) {
    auto* couple = find(coupleId);
    if (couple == nullptr) return failure("a cover of no couple");
    auto& covers = couple->covers;
    if (const auto found = covers.find(id); found != covers.end()) {
        auto& [stored, usedAt] = found->second;
        if (stored != bytes) return CoverOutcome::otherBytes;
        usedAt = std::max(usedAt, at);
        return CoverOutcome::isThere;
    }
    const auto weightOf = [](std::string_view stored) { return std::max(stored.size(), minCoverWeight); };
    auto weight = weightOf(bytes);
    for (const auto& [other, cover] : covers) weight += weightOf(cover.bytes);
    while (weight > limit && !covers.empty()) {
        const auto oldest = std::ranges::min_element(covers, {}, [](const auto& entry) { return entry.second.usedAt; });
        weight -= weightOf(oldest->second.bytes);
        covers.erase(oldest);
    }
    covers.emplace(id, StoredCover{std::string{bytes}, at});
    return CoverOutcome::stored;
}

StoreResult<std::optional<std::string>> MemoryStore::readCover(std::string_view coupleId, const UUID& id, Instant at) {
    auto* couple = find(coupleId);
    if (couple == nullptr) return std::nullopt;
    const auto found = couple->covers.find(id);
    if (found == couple->covers.end()) return std::nullopt;
    auto& [bytes, usedAt] = found->second;
    if (usedAt < at - coverUseTime) usedAt = at;
    return bytes;
}

// Housekeeping

StoreResult<bool> MemoryStore::sweep(Instant now) {
    if (auto failed = failing("sweep"); !failed) return std::unexpected(failed.error());
    const auto isOver = [&](std::optional<Instant> since, auto span) { return since && *since <= now - span; };
    std::vector<std::string> left;
    for (auto& [coupleId, couple] : tables_.couples) {
        for (const auto& [id, at] : couple.buried) {
            if (isOver(at, batchLifetime)) couple.board.tombstones.erase(id);
        }
        std::erase_if(couple.buried, [&](const auto& entry) { return isOver(entry.second, batchLifetime); });
        std::erase_if(couple.batches, [&](const auto& entry) { return isOver(entry.second, batchLifetime); });
        std::erase_if(couple.covers, [&](const auto& entry) { return isOver(entry.second.usedAt, graceTime); });
        if (isOver(couple.record.emptySince, graceTime)) left.push_back(coupleId);
    }
    for (const auto& coupleId : left) removeCouple(coupleId);
    std::erase_if(tables_.wrongCodes, [&](const auto& entry) { return isOver(entry.second, codeMemory); });
    std::erase_if(tables_.codes, [&](const auto& entry) { return isOver(entry.second.expiresAt, codeMemory); });
    std::erase_if(tables_.links, [&](const auto& entry) { return isOver(entry.second.expiresAt, graceTime); });
    return false;
}

void MemoryStore::removeCouple(const std::string& coupleId) {
    const auto isOfCouple = [&](const auto& entry) { return entry.second.coupleId == coupleId; };
    std::erase_if(tables_.links, isOfCouple);
    std::erase_if(tables_.codes, isOfCouple);
    tables_.couples.erase(coupleId);
}

} // namespace lumaro
