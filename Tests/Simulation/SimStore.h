// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Fakes/MemoryStore.h"
#include "Tests/Simulation/Mutants.h"
#include "Tests/Simulation/Witness.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lumaro::simulation {

/// The store, whose commits the witness sees. Survives its server.
class SimStore final : public Store {
public:
    SimStore(Sabotage sabotage, Witness& witness, Coverage& coverage)
        : sabotage_(sabotage), witness_(witness), coverage_(coverage) {}

    /// Rooms that are loaded remember only so many batches, so that the store finds the older duplicates.
    void remember(std::size_t batches) { remembered_ = batches; }

    StoreResult<void> begin() { return memory_.beginTransaction(); }
    void makeDurable();
    void undo();

    StoreResult<std::optional<RoomRecord>> loadRoom(std::string_view coupleId) override;
    StoreResult<CommitOutcome> commit(const Commit& commit) override;
    StoreResult<bool> sweep(Instant now) override;

    StoreResult<void> setLastSeen(std::string_view coupleId, PartnerID slot, Instant at) override {
        return memory_.setLastSeen(coupleId, slot, at);
    }
    StoreResult<LastSeen> lastSeen(std::string_view coupleId) override { return memory_.lastSeen(coupleId); }
    StoreResult<void> createCouple(const CoupleRecord& couple) override { return memory_.createCouple(couple); }
    StoreResult<std::optional<CoupleRecord>> couple(std::string_view id) override { return memory_.couple(id); }
    StoreResult<Members> members(std::string_view coupleId) override { return memory_.members(coupleId); }
    StoreResult<void> setName(std::string_view coupleId, PartnerID slot, std::optional<std::string> name) override {
        return memory_.setName(coupleId, slot, std::move(name));
    }
    StoreResult<void> putDevice(std::string_view coupleId, const DeviceRecord& device) override {
        return memory_.putDevice(coupleId, device);
    }
    StoreResult<void> removeDevice(std::string_view coupleId, std::string_view deviceId, Instant at) override {
        return memory_.removeDevice(coupleId, deviceId, at);
    }
    StoreResult<void> putLink(const LinkRecord& link) override { return memory_.putLink(link); }
    StoreResult<std::optional<LinkRecord>> link(std::string_view inviteId) override { return memory_.link(inviteId); }
    StoreResult<std::optional<LinkRecord>> currentLink(std::string_view coupleId, Instant now) override {
        return memory_.currentLink(coupleId, now);
    }
    StoreResult<void> replaceLinks(std::string_view coupleId) override { return memory_.replaceLinks(coupleId); }
    StoreResult<bool> putCode(const CodeRecord& code, Instant now) override { return memory_.putCode(code, now); }
    StoreResult<std::optional<CodeRecord>> code(std::string_view digits) override { return memory_.code(digits); }
    StoreResult<void> useCode(std::string_view digits) override { return memory_.useCode(digits); }
    StoreResult<void> addWrongCode(std::string_view origin, Instant at) override {
        return memory_.addWrongCode(origin, at);
    }
    StoreResult<WrongCodes> wrongCodes(std::string_view origin, Instant since) override {
        return memory_.wrongCodes(origin, since);
    }
    StoreResult<std::optional<MediaRecord>> media(std::string_view coupleId, const UUID& id) override {
        return memory_.media(coupleId, id);
    }
    StoreResult<std::size_t> mediaBytes(std::string_view coupleId) override { return memory_.mediaBytes(coupleId); }
    StoreResult<void> putMedia(std::string_view coupleId, const UUID& id, const MediaRecord& record,
                               std::string_view bytes, Instant at) override {
        return memory_.putMedia(coupleId, id, record, bytes, at);
    }
    StoreResult<std::optional<std::string>> readMedia(std::string_view coupleId, const UUID& id) override {
        return memory_.readMedia(coupleId, id);
    }
    StoreResult<CoverOutcome> putCover(std::string_view coupleId, const UUID& id, std::string_view bytes, Instant at,
                                       std::size_t limit) override {
        return memory_.putCover(coupleId, id, bytes, at, limit);
    }
    StoreResult<std::optional<std::string>> readCover(std::string_view coupleId, const UUID& id, Instant at) override {
        return memory_.readCover(coupleId, id, at);
    }

private:
    Commit sabotaged(const Commit& commit);
    void keepIds();

    Sabotage sabotage_;
    Witness& witness_;
    Coverage& coverage_;
    MemoryStore memory_;
    std::vector<Commit> commits_; ///< of this transaction, for the planted fault that keeps their ids
    std::size_t remembered_ = recentBatchCount;
};

} // namespace lumaro::simulation
