// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "LumaroCore/Outbox/OutboxBatch.h"
#include "LumaroCore/Protocol/Messages.h"
#include "LumaroRoom/Store/Records.h"
#include "Tests/Simulation/Coverage.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro::simulation {

/// Checks all that devices accept, the store commits and the room sends against what must hold (docs/simulation.md),
/// and keeps the first violation.
class Witness {
public:
    explicit Witness(Coverage& coverage) : coverage_(coverage) {}

    const std::optional<std::string>& complaint() const { return complaint_; }
    void complain(std::string what);

    // A device's outbox

    enum class Acceptance : std::uint8_t {
        byWord,  ///< the device answered that it is stored
        asFound, ///< found in the outbox: the device ended, or met a fault, before it could answer
    };
    void accepted(std::size_t device, const OutboxBatch& batch, Acceptance how);
    /// What a device has accepted and the store does not hold must wait in this outbox.
    void checkOutbox(std::size_t device, const std::deque<OutboxBatch>& waiting);

    // The store

    /// A commit as it goes into a transaction, with the board as it then is.
    void stored(const Commit& commit, const Board& before, const Board& after);
    void transactionIsDurable();
    void transactionIsUndone() { tentative_.clear(); }

    // Lines

    void roomSays(std::string_view frame);
    void lineOpened(std::size_t device);
    void deviceHeard(std::size_t device, const ServerMessage& message, const Board& confirmed);

    bool isStored(const UUID& batchId) const;
    std::size_t unstored(std::size_t device) const { return devices_.at(device).waiting.size(); }

private:
    struct Batch {
        std::size_t device = 0;
        std::uint64_t ordinal = 0; ///< among those that its device answered for; 0 for others
        std::vector<Op> ops;
        std::optional<std::size_t> commit; ///< its place in the history
    };
    struct Change {
        std::optional<UUID> batchId;
        BoardChange change{};
        std::vector<BoardItem> replaced{}; ///< what the upserted were before
        std::vector<UUID> undeleted{};     ///< on the board although the batch deletes them
        std::size_t items = 0;
        std::uint64_t look = 0;
    };
    struct Device {
        std::uint64_t accepted = 0;
        std::uint64_t lastStored = 0;
        std::vector<UUID> waiting; ///< accepted and not in the store, oldest first
        std::size_t heard = 0;     ///< the place in the history up to which its room has told it
        bool awaitsWelcome = true;
    };

    void takeEffect(const Change& change);
    void checkVersions(const Change& change, const std::vector<Op>& ops);
    void noteDeletes(const Change& change, const Batch& batch);
    void heardWelcome(std::size_t index, Device& device, const Board& confirmed);
    void heardOps(std::size_t index, Device& device, const UUID& batchId, const Board& confirmed);
    void heardAck(std::size_t index, Device& device, const UUID& batchId, const Board& confirmed);

    Coverage& coverage_;
    std::optional<std::string> complaint_;
    std::map<UUID, Batch> batches_;
    std::map<std::size_t, Device> devices_;
    std::vector<Change> tentative_;
    std::vector<std::uint64_t> history_{emptyLook()}; ///< what `lookOf` the board was after each commit
    std::map<UUID, Instant> deletedAt_;

    static std::uint64_t emptyLook();
};

/// A hash of what people see of a board: items in their order, background and thread.
std::uint64_t lookOf(const Board& board);

} // namespace lumaro::simulation
