// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/MemoryStore.h"

#include "LumaroCore/Support/Fatal.h"

#include <algorithm>
#include <ranges>

namespace lumaro {
namespace {

std::unexpected<StoreError> failure(std::string message) {
    return std::unexpected(StoreError{std::move(message)});
}

std::set<UUID> namedMedia(const Board& board) {
    std::set<UUID> named;
    for (const auto& item : board.items) {
        if (const auto* photo = item.payload.as<PhotoPayload>()) named.insert(photo->mediaId);
        if (const auto* sticker = item.payload.as<StickerPayload>()) named.insert(sticker->mediaId);
    }
    return named;
}

} // namespace

template <class Table>
void MemoryStore::put(Table& table, typename Table::key_type key, std::optional<typename Table::mapped_type> value) {
    const auto set = [&table](const auto& place, auto&& entry) {
        if (entry) {
            table.insert_or_assign(place, *std::move(entry));
        } else {
            table.erase(place);
        }
    };
    if (isInTransaction_) {
        const auto found = table.find(key);
        auto before = found == table.end() ? std::nullopt : std::optional{found->second};
        undo_.emplace_back([set, key, before = std::move(before)]() mutable { set(key, std::move(before)); });
    }
    set(key, std::move(value));
}

template <class Table, class Goes>
void MemoryStore::removeWhere(Table& table, Goes goes) {
    std::vector<typename Table::key_type> gone;
    for (const auto& [key, value] : table) {
        if (goes(key, value)) gone.push_back(key);
    }
    for (auto& key : gone) put(table, std::move(key), std::nullopt);
}

StoreResult<void> MemoryStore::failing(std::string_view call) const {
    if (fault_ && fault_(call)) return failure(std::string{call} + " fails as the test wants it");
    return {};
}

StoreResult<void> MemoryStore::beginTransaction() {
    if (isInTransaction_) fatal("a transaction within another");
    isInTransaction_ = true;
    return {};
}

StoreResult<void> MemoryStore::commitTransaction() {
    if (auto failed = failing("commitTransaction"); !failed) {
        rollBack();
        return failed;
    }
    isInTransaction_ = false;
    undo_.clear();
    return {};
}

void MemoryStore::rollBack() {
    isInTransaction_ = false;
    for (auto& undo : undo_ | std::views::reverse) undo();
    undo_.clear();
}

const MemoryStore::Couple* MemoryStore::find(std::string_view coupleId) const {
    const auto found = couples_.find(coupleId);
    return found == couples_.end() ? nullptr : &found->second;
}

// Rooms

StoreResult<std::optional<RoomRecord>> MemoryStore::loadRoom(std::string_view coupleId) {
    if (auto failed = failing("loadRoom"); !failed) return std::unexpected(failed.error());
    const auto* couple = find(coupleId);
    if (couple == nullptr) return std::nullopt;
    return RoomRecord{couple->board, couple->version, recentBatches(std::string{coupleId}), couple->members};
}

std::vector<UUID> MemoryStore::recentBatches(const std::string& coupleId) const {
    std::map<std::uint64_t, UUID> inOrder;
    for (auto i = batches_.lower_bound({coupleId, UUID{}}); i != batches_.end() && i->first.first == coupleId; ++i) {
        inOrder.emplace(i->second.place, i->first.second);
    }
    const auto older = inOrder.size() - std::min(inOrder.size(), recentBatchCount);
    auto recent = inOrder | std::views::values | std::views::drop(older);
    return {recent.begin(), recent.end()};
}

StoreResult<CommitOutcome> MemoryStore::commit(const Commit& commit) {
    if (auto failed = failing("commit"); !failed) return std::unexpected(failed.error());
    const auto* found = find(commit.coupleId);
    if (found == nullptr) return CommitOutcome::versionConflict;
    if (commit.batchId && batches_.contains({commit.coupleId, *commit.batchId})) return CommitOutcome::duplicateBatch;
    if (found->version != commit.expectedVersion) return CommitOutcome::versionConflict;
    auto couple = *found;
    ++couple.version;
    if (commit.batchId) put(batches_, {commit.coupleId, *commit.batchId}, Batch{nextPlace_++, commit.at});
    storeChange(commit.coupleId, couple.board, commit.change, commit.at);
    noteNamedMedia(commit.coupleId, namedMedia(found->board), couple.board, commit.at);
    put(couples_, commit.coupleId, std::move(couple));
    return CommitOutcome::stored;
}

void MemoryStore::storeChange(const std::string& coupleId, Board& board, const BoardChange& change, Instant at) {
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
    for (const auto& id : change.unburied) {
        board.tombstones.erase(id);
        put(buried_, {coupleId, id}, std::nullopt);
    }
    for (const auto& tombstone : change.buried) {
        board.tombstones[tombstone.itemId] = tombstone.deletedAt;
        put(buried_, {coupleId, tombstone.itemId}, at);
    }
}

void MemoryStore::noteNamedMedia(const std::string& coupleId, const std::set<UUID>& before, const Board& after,
                                 Instant at) {
    const auto now = namedMedia(after);
    const auto note = [&](const UUID& id, std::optional<Instant> unnamedSince) {
        const auto found = media_.find({coupleId, id});
        if (found == media_.end()) return;
        auto medium = found->second;
        medium.unnamedSince = unnamedSince;
        put(media_, {coupleId, id}, std::move(medium));
    };
    for (const auto& id : before) {
        if (!now.contains(id)) note(id, at);
    }
    for (const auto& id : now) {
        if (!before.contains(id)) note(id, std::nullopt);
    }
}

StoreResult<void> MemoryStore::setLastSeen(std::string_view coupleId, PartnerID slot, Instant at) {
    if (const auto* found = find(coupleId)) {
        auto couple = *found;
        couple.lastSeen.of(slot) = at;
        put(couples_, std::string{coupleId}, std::move(couple));
    }
    return {};
}

StoreResult<LastSeen> MemoryStore::lastSeen(std::string_view coupleId) {
    const auto* couple = find(coupleId);
    return couple == nullptr ? LastSeen{} : couple->lastSeen;
}

// Couples and their devices

StoreResult<void> MemoryStore::createCouple(const CoupleRecord& couple) {
    if (auto failed = failing("createCouple"); !failed) return failed;
    if (find(couple.coupleId) != nullptr) return failure("the couple exists");
    Couple created;
    created.record = couple;
    created.board.updatedAt = couple.createdAt;
    put(couples_, couple.coupleId, std::move(created));
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
    if (const auto* found = find(coupleId)) {
        auto couple = *found;
        couple.members.names.of(slot) = std::move(name);
        put(couples_, std::string{coupleId}, std::move(couple));
    }
    return {};
}

StoreResult<void> MemoryStore::putDevice(std::string_view coupleId, const DeviceRecord& device) {
    const auto* found = find(coupleId);
    if (found == nullptr) return failure("a device of no couple");
    auto couple = *found;
    auto& devices = couple.members.devices;
    std::erase_if(devices, [&](const auto& other) { return other.deviceId == device.deviceId; });
    devices.insert(std::ranges::upper_bound(devices, device.deviceId, {}, &DeviceRecord::deviceId), device);
    couple.record.emptySince = std::nullopt;
    put(couples_, std::string{coupleId}, std::move(couple));
    return {};
}

StoreResult<void> MemoryStore::removeDevice(std::string_view coupleId, std::string_view deviceId, Instant at) {
    const auto* found = find(coupleId);
    if (found == nullptr) return {};
    auto couple = *found;
    auto& devices = couple.members.devices;
    if (std::erase_if(devices, [&](const auto& device) { return device.deviceId == deviceId; }) == 0) return {};
    if (devices.empty()) couple.record.emptySince = at;
    put(couples_, std::string{coupleId}, std::move(couple));
    return {};
}

// Ways in

StoreResult<void> MemoryStore::putLink(const LinkRecord& link) {
    if (find(link.coupleId) == nullptr) return failure("a link of no couple");
    put(links_, link.inviteId, link);
    return {};
}

StoreResult<std::optional<LinkRecord>> MemoryStore::link(std::string_view inviteId) {
    const auto found = links_.find(inviteId);
    return found == links_.end() ? std::nullopt : std::optional{found->second};
}

StoreResult<std::optional<LinkRecord>> MemoryStore::currentLink(std::string_view coupleId, Instant now) {
    std::optional<LinkRecord> current;
    for (const auto& link : links_ | std::views::values) {
        const bool isAlive = link.coupleId == coupleId && !link.isReplaced && link.expiresAt > now;
        if (isAlive && (!current || link.expiresAt > current->expiresAt)) current = link;
    }
    return current;
}

StoreResult<void> MemoryStore::replaceLinks(std::string_view coupleId) {
    for (auto link : std::vector(links_.begin(), links_.end()) | std::views::values) {
        if (link.coupleId != coupleId) continue;
        link.isReplaced = true;
        put(links_, link.inviteId, link);
    }
    return {};
}

StoreResult<bool> MemoryStore::putCode(const CodeRecord& code, Instant now) {
    if (find(code.coupleId) == nullptr) return failure("a code of no couple");
    const auto taken = codes_.find(code.code);
    if (taken != codes_.end() && taken->second.coupleId != code.coupleId && !taken->second.isUsed &&
        taken->second.expiresAt > now) {
        return false;
    }
    for (auto other : std::vector(codes_.begin(), codes_.end()) | std::views::values) {
        if (other.coupleId != code.coupleId) continue;
        other.isUsed = true;
        put(codes_, other.code, other);
    }
    put(codes_, code.code, code);
    return true;
}

StoreResult<std::optional<CodeRecord>> MemoryStore::code(std::string_view digits) {
    const auto found = codes_.find(digits);
    return found == codes_.end() ? std::nullopt : std::optional{found->second};
}

StoreResult<void> MemoryStore::useCode(std::string_view digits) {
    if (const auto found = codes_.find(digits); found != codes_.end()) {
        auto used = found->second;
        used.isUsed = true;
        put(codes_, used.code, used);
    }
    return {};
}

StoreResult<void> MemoryStore::addWrongCode(std::string_view origin, Instant at) {
    put(wrongCodes_, nextPlace_++, std::pair{std::string{origin}, at});
    return {};
}

StoreResult<Store::WrongCodes> MemoryStore::wrongCodes(std::string_view origin, Instant since) {
    WrongCodes counts;
    for (const auto& [from, at] : wrongCodes_ | std::views::values) {
        if (at < since) continue;
        ++counts.ofAll;
        if (from == origin) ++counts.ofOrigin;
    }
    return counts;
}

// Media

StoreResult<std::optional<Store::MediaRecord>> MemoryStore::media(std::string_view coupleId, const UUID& id) {
    const auto found = media_.find({std::string{coupleId}, id});
    return found == media_.end() ? std::nullopt : std::optional{found->second.record};
}

StoreResult<std::size_t> MemoryStore::mediaBytes(std::string_view coupleId) {
    std::size_t bytes = 0;
    for (const auto& [key, medium] : media_) {
        if (key.first == coupleId) bytes += medium.bytes.size();
    }
    return bytes;
}

StoreResult<void> MemoryStore::putMedia(std::string_view coupleId, const UUID& id, const MediaRecord& record,
                                        std::string_view bytes, Instant at) {
    const auto* couple = find(coupleId);
    if (couple == nullptr) return failure("media of no couple");
    if (media_.contains({std::string{coupleId}, id})) return {};
    const bool isNamed = namedMedia(couple->board).contains(id);
    Medium medium{record, std::string{bytes}, isNamed ? std::nullopt : std::optional{at}};
    put(media_, {std::string{coupleId}, id}, std::move(medium));
    return {};
}

StoreResult<std::optional<std::string>> MemoryStore::readMedia(std::string_view coupleId, const UUID& id) {
    const auto found = media_.find({std::string{coupleId}, id});
    return found == media_.end() ? std::nullopt : std::optional{found->second.bytes};
}

// Housekeeping

StoreResult<bool> MemoryStore::sweep(Instant now) {
    if (auto failed = failing("sweep"); !failed) return std::unexpected(failed.error());
    removeWhere(batches_, [&](const auto&, const Batch& batch) { return batch.at <= now - batchLifetime; });
    for (const auto& [key, at] : std::vector(buried_.begin(), buried_.end())) {
        if (at > now - batchLifetime) continue;
        put(buried_, key, std::nullopt);
        if (const auto* found = find(key.first)) {
            auto couple = *found;
            couple.board.tombstones.erase(key.second);
            put(couples_, key.first, std::move(couple));
        }
    }
    removeWhere(wrongCodes_, [&](const auto&, const auto& entry) { return entry.second <= now - codeMemory; });
    removeWhere(codes_, [&](const auto&, const CodeRecord& code) { return code.expiresAt <= now - codeMemory; });
    removeWhere(links_, [&](const auto&, const LinkRecord& link) { return link.expiresAt <= now - graceTime; });
    removeWhere(media_, [&](const auto&, const Medium& medium) {
        return medium.unnamedSince && *medium.unnamedSince <= now - graceTime;
    });
    for (const auto& [id, couple] : std::vector(couples_.begin(), couples_.end())) {
        if (couple.record.emptySince && *couple.record.emptySince <= now - graceTime) removeCouple(id);
    }
    return false;
}

void MemoryStore::removeCouple(const std::string& coupleId) {
    const auto isOfCouple = [&](const OfCouple& key, const auto&) { return key.first == coupleId; };
    removeWhere(batches_, isOfCouple);
    removeWhere(buried_, isOfCouple);
    removeWhere(media_, isOfCouple);
    removeWhere(links_, [&](const auto&, const LinkRecord& link) { return link.coupleId == coupleId; });
    removeWhere(codes_, [&](const auto&, const CodeRecord& code) { return code.coupleId == coupleId; });
    put(couples_, coupleId, std::nullopt);
}

} // namespace lumaro
