// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Witness.h"

#include "LumaroCore/Support/Overloaded.h"

#include <algorithm>
#include <set>
#include <utility>

namespace lumaro::simulation {
namespace {

std::string named(std::size_t device) {
    return "device " + std::to_string(device);
}

std::string shortly(const UUID& id) {
    return id.lowerString();
}

std::optional<UUID> batchIdIn(std::string_view frame) {
    static constexpr std::string_view key = R"("batchId":")";
    const auto place = frame.find(key);
    if (place == std::string_view::npos) return std::nullopt;
    return UUID::parse(frame.substr(place + key.size(), UUID::textSize));
}

// The ids that a batch deletes and does not put up again behind it.
std::set<UUID> deletedForGood(const std::vector<Op>& ops) {
    std::set<UUID> gone;
    for (const auto& op : ops) {
        if (const auto* deletion = std::get_if<Delete>(&op.value)) gone.insert(deletion->itemId);
        if (const auto* upsert = std::get_if<Upsert>(&op.value)) gone.erase(upsert->item.id);
    }
    return gone;
}

bool deletesAnything(const std::vector<Op>& ops) {
    return std::ranges::any_of(ops, [](const Op& op) { return std::holds_alternative<Delete>(op.value); });
}

} // namespace

// By versions: an item of one version holds one thing everywhere, which is compared in full when all is at rest.
std::uint64_t lookOf(const Board& board) {
    Hasher hasher;
    hasher.add(board.background);
    hasher.add(board.threadTiedAt);
    for (const auto& item : board.items) {
        hasher.add(item.id);
        hasher.add(item.updatedAt);
        hasher.add(item.author);
        hasher.add(item.center.x);
        hasher.add(item.z);
    }
    return hasher.result();
}

std::uint64_t Witness::emptyLook() {
    return lookOf(Board{});
}

void Witness::complain(std::string what) {
    if (!complaint_) complaint_ = std::move(what);
}

// A device's outbox

void Witness::accepted(std::size_t device, const OutboxBatch& batch, Acceptance how) {
    auto& owner = devices_[device];
    const auto [known, isNew] = batches_.try_emplace(batch.batchId);
    if (!isNew) return;
    const auto ordinal = how == Acceptance::byWord ? ++owner.accepted : 0;
    known->second = {.device = device, .ordinal = ordinal, .ops = batch.ops, .commit = {}};
    owner.waiting.push_back(batch.batchId);
}

void Witness::checkOutbox(std::size_t device, const std::deque<OutboxBatch>& waiting) {
    for (const auto& id : devices_[device].waiting) {
        if (std::ranges::find(waiting, id, &OutboxBatch::batchId) != waiting.end()) continue;
        complain(named(device) + " has accepted batch " + shortly(id) +
                 ": it is neither in the store nor in the outbox");
        return;
    }
}

// The store

void Witness::stored(const Commit& commit, const Board& before, const Board& after) {
    Change change{.batchId = commit.batchId, .change = commit.change};
    for (const auto& item : commit.change.upserted) {
        if (const auto* old = before.find(item.id)) change.replaced.push_back(*old);
    }
    if (const auto made = commit.batchId ? batches_.find(*commit.batchId) : batches_.end(); made != batches_.end()) {
        for (const auto& id : deletedForGood(made->second.ops)) {
            if (after.find(id) != nullptr) change.undeleted.push_back(id);
        }
    }
    change.items = after.items.size();
    change.look = lookOf(after);
    tentative_.push_back(std::move(change));
}

void Witness::transactionIsDurable() {
    for (const auto& change : std::exchange(tentative_, {})) takeEffect(change);
}

void Witness::takeEffect(const Change& change) {
    history_.push_back(change.look);
    if (change.items > BoardSpec::maxLiveItems) complain("the room's board has more than 60 items");
    if (change.items == BoardSpec::maxLiveItems) coverage_.note(Met::fullBoards);
    if (!change.batchId) return;
    coverage_.note(Met::batchesInStore);
    const auto found = batches_.find(*change.batchId);
    if (found == batches_.end())
        return complain("batch " + shortly(*change.batchId) + " is stored, and nobody made it");
    auto& batch = found->second;
    checkVersions(change, batch.ops);
    if (batch.commit) return complain("batch " + shortly(*change.batchId) + " takes effect twice");
    batch.commit = history_.size() - 1;
    auto& owner = devices_[batch.device];
    if (batch.ordinal != 0 && batch.ordinal <= owner.lastStored) {
        complain(named(batch.device) + ": batch " + shortly(*change.batchId) + " takes effect after a later one");
    }
    owner.lastStored = std::max(owner.lastStored, batch.ordinal);
    std::erase(owner.waiting, *change.batchId);
    for (const auto& id : change.undeleted) complain("item " + shortly(id) + " stays on the board that deletes it");
    noteDeletes(change, batch);
}

// An item is replaced by a later version only, and a deleted one put up again by a later version only. But a batch may
// take an item down, as a doodle with what it is drawn on, and then put up an older version of it.
void Witness::checkVersions(const Change& change, const std::vector<Op>& ops) {
    if (deletesAnything(ops)) return;
    for (const auto& item : change.change.upserted) {
        const auto old = std::ranges::find(change.replaced, item.id, &BoardItem::id);
        if (old != change.replaced.end() && *old != item &&
            !(item.updatedAt > old->updatedAt || (item.updatedAt == old->updatedAt && item.author < old->author))) {
            complain("item " + shortly(item.id) + " is replaced by a version that is not later");
        }
        const auto grave = deletedAt_.find(item.id);
        if (grave == deletedAt_.end()) continue;
        if (item.updatedAt <= grave->second) {
            complain("deleted item " + shortly(item.id) + " is back by an upsert that is not later");
        }
        coverage_.note(Met::deletedItemsBack);
    }
}

// The instants of deletes as the rules have them; where an upsert may have been refused, as if it had not.
void Witness::noteDeletes(const Change& change, const Batch& batch) {
    for (const auto& tombstone : change.change.buried) deletedAt_[tombstone.itemId] = tombstone.deletedAt;
    for (const auto& op : batch.ops) {
        if (const auto* deletion = std::get_if<Delete>(&op.value)) {
            auto& at = deletedAt_.try_emplace(deletion->itemId, deletion->deletedAt).first->second;
            at = std::max(at, deletion->deletedAt);
        }
        if (const auto* upsert = std::get_if<Upsert>(&op.value)) {
            const auto grave = deletedAt_.find(upsert->item.id);
            if (grave != deletedAt_.end() && upsert->item.updatedAt > grave->second) deletedAt_.erase(grave);
        }
    }
}

// Lines

bool Witness::isStored(const UUID& batchId) const {
    const auto found = batches_.find(batchId);
    return found != batches_.end() && found->second.commit.has_value();
}

void Witness::roomSays(std::string_view frame) {
    const bool isAck = frame.find(R"("type":"ack")") < 20;
    const bool isOps = frame.find(R"("type":"ops")") < 20;
    if (!isAck && !isOps) return;
    const auto batchId = batchIdIn(frame);
    if (!batchId || !isStored(*batchId)) {
        complain(std::string{isAck ? "an ack" : "ops"} +
                 " of a batch that is not in the store: " + std::string{frame.substr(0, 80)});
    }
    if (isAck) coverage_.note(Met::batchesAcked);
}

void Witness::lineOpened(std::size_t device) {
    devices_[device].awaitsWelcome = true;
}

void Witness::deviceHeard(std::size_t index, const ServerMessage& message, const Board& confirmed) {
    auto& device = devices_[index];
    if (std::holds_alternative<ServerMessage::Error>(message.value)) return;
    if (device.awaitsWelcome && !std::holds_alternative<ServerMessage::Welcome>(message.value)) {
        return complain(named(index) + " should have heard a welcome, and heard " + std::string{message.caseName()});
    }
    if (std::holds_alternative<ServerMessage::Welcome>(message.value)) heardWelcome(index, device, confirmed);
    if (const auto* ops = std::get_if<ServerMessage::Ops>(&message.value)) {
        heardOps(index, device, ops->batchId, confirmed);
    }
    if (const auto* ack = std::get_if<ServerMessage::Ack>(&message.value)) {
        heardAck(index, device, ack->batchId, confirmed);
    }
    if (std::holds_alternative<ServerMessage::Presence>(message.value)) coverage_.note(Met::presence);
}

// The board of a welcome is the room's after some commit, and none that this device had already heard of is missing.
void Witness::heardWelcome(std::size_t index, Device& device, const Board& confirmed) {
    device.awaitsWelcome = false;
    const auto look = lookOf(confirmed);
    for (auto place = device.heard; place < history_.size(); ++place) {
        if (history_[place] != look) continue;
        device.heard = place;
        return;
    }
    complain(named(index) + " is welcomed with a board that the store did not have since it last heard");
}

void Witness::heardOps(std::size_t index, Device& device, const UUID& batchId, const Board& confirmed) {
    const auto found = batches_.find(batchId);
    if (found == batches_.end()) return complain(named(index) + " hears ops of a batch that nobody made");
    const auto place = found->second.commit.value_or(0);
    if (place <= device.heard) return complain(named(index) + " hears ops again, or out of order: " + shortly(batchId));
    device.heard = place;
    if (lookOf(confirmed) != history_.at(place)) {
        complain(named(index) + " has another board than the room after ops " + shortly(batchId));
    }
}

// After an ack the boards differ where the room rejected ops or had the batch before; then a welcome is next.
void Witness::heardAck(std::size_t index, Device& device, const UUID& batchId, const Board& confirmed) {
    const auto found = batches_.find(batchId);
    if (found == batches_.end()) return complain(named(index) + " hears an ack of a batch that nobody made");
    const auto place = found->second.commit.value_or(0);
    if (found->second.device != index) complain(named(index) + " hears an ack of another's batch");
    const bool isNew = place > device.heard;
    device.heard = std::max(device.heard, place);
    device.awaitsWelcome = !isNew || lookOf(confirmed) != history_.at(place);
    if (device.awaitsWelcome) coverage_.note(Met::corrections);
}

} // namespace lumaro::simulation
