// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroRoom/Sqlite/Database.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace lumaro {

/// What a commit does to one item or its tombstone.
struct JournalEffect {
    enum class Kind : std::uint8_t { takeDown, bury, unbury, putUp };

    Kind kind = Kind::putUp;
    UUID item;
    std::optional<UUID> media;        ///< putUp: what the item names
    std::optional<Instant> deletedAt; ///< bury
    std::string json;                 ///< putUp: the item
};

constexpr std::array<std::string_view, 4> namesOf(JournalEffect::Kind) {
    return {"takeDown", "bury", "unbury", "putUp"};
}

/// A commit as the journal has it.
struct JournalStep {
    std::optional<UUID> batchId;
    Instant at;
    BackgroundID background = BackgroundID::butter;
    std::optional<Instant> threadTiedAt;
    Instant updatedAt;
    std::vector<JournalEffect> effects; ///< in the order in which they are done
    std::int64_t place = 0;             ///< in the order of all commits; set when it is appended
};

/// The newest commits of all couples, one behind the other in one table. A page of it holds what several rooms commit
/// together; the tables of the boards would have a page or two written for each. Steps stay in memory too, until the
/// journal's owner has checkpointed them in those tables, many of a couple in one go.
///
/// What is appended and checkpointed takes effect with the transaction around it, whose end is told by `committed` or
/// `rolledBack`.
class Journal {
public:
    /// The database outlives the journal.
    explicit Journal(Database& database) : database_(database) {}

    /// Reads what was not checkpointed when the database was last left.
    [[nodiscard]] StoreResult<void> recover();

    [[nodiscard]] StoreResult<void> append(std::int64_t couple, JournalStep step);
    /// The couple's steps that are not checkpointed, oldest first; valid until the journal changes.
    std::span<const JournalStep> stepsOf(std::int64_t couple) const;
    bool holdsBatch(std::int64_t couple, const UUID& batchId) const;

    /// All steps of the couple stand in the tables of its board.
    void checkpointed(std::int64_t couple);
    /// Forgets rows that are of no use any more, when there are many.
    [[nodiscard]] StoreResult<void> trim();

    void committed();
    void rolledBack();

    /// Couples with new steps in this transaction.
    const std::vector<std::int64_t>& touched() const { return touched_; }
    /// Couples with steps from before this transaction, at most so many: those that have waited longest to be
    /// checkpointed.
    std::vector<std::int64_t> longestWaiting(std::size_t count) const;
    /// What the steps in memory weigh, about.
    std::size_t bytes() const { return bytes_; }
    /// Every step so far has a lower place, or this one.
    std::int64_t lastPlace() const { return lastPlace_; }

private:
    struct Pending {
        std::vector<JournalStep> steps;
        std::unordered_set<UUID> batches; ///< of the steps
        std::size_t durable = 0;          ///< steps that are from transactions before this one
        std::size_t checkpointed = 0;     ///< steps that are checkpointed in this transaction
    };

    Pending& touch(std::int64_t couple);
    void keep(std::int64_t couple, JournalStep step);
    void drop(Pending& pending, std::size_t from, std::size_t to);
    StoreResult<void> write(std::int64_t couple, const JournalStep* step, const JournalEffect* effect);

    Database& database_;
    std::unordered_map<std::int64_t, Pending> couples_;
    std::map<std::int64_t, std::int64_t> waiting_; ///< couples with durable steps, by the place of the first
    std::vector<std::int64_t> touched_;
    std::size_t bytes_ = 0;
    std::int64_t lastPlace_ = 0;
    std::int64_t durablePlace_ = 0; ///< the last one before this transaction
    std::int64_t trimmedTo_ = 0;    ///< rows before it are gone
};

} // namespace lumaro
