// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Apply.h"

#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace lumaro::BoardLogic {
namespace {

// An item stands at most this deep in what holds it on the wire: a message, its ops, an op. One that is written at this
// depth can be read back wherever it travels.
constexpr int itemDepth = 3;

void bury(Board& board, const UUID& id, Instant deletedAt) {
    const auto [grave, isNew] = board.tombstones.try_emplace(id, deletedAt);
    if (!isNew) grave->second = std::max(grave->second, deletedAt);
}

// One batch on its way onto a board.
class Application {
public:
    enum class Items : std::uint8_t { unchecked, checked };
    Application(Board& board, Instant now, Items items) : board_(board), now_(now), items_(items) {}

    std::optional<RejectionReason> take(const Op& op) {
        return std::visit(Overloaded{[this](const Upsert& upsert) { return put(upsert.item); },
                                     [this](const Delete& deletion) { return remove(deletion); },
                                     [this](const SetBackground& change) { return paint(change); }},
                          op.value);
    }

    void finish() {
        if (latest_) board_.updatedAt = std::max(board_.updatedAt, *latest_);
    }

private:
    std::optional<RejectionReason> put(const BoardItem& item) {
        if (items_ == Items::unchecked) {
            if (const auto reason = checkItem(item)) return reason;
        }
        const auto existing = std::ranges::find(board_.items, item.id, &BoardItem::id);
        if (existing != board_.items.end()) {
            if (!wins(item.updatedAt, item.author, existing->updatedAt, existing->author))
                return RejectionReason::stale;
            *existing = item;
        } else {
            const auto grave = board_.tombstones.find(item.id);
            const bool isBuried = grave != board_.tombstones.end();
            if (isBuried && item.updatedAt <= grave->second) return RejectionReason::deleted;
            if (board_.items.size() >= BoardSpec::maxLiveItems) {
                if (mutant(Mutant::refusedInsertDigsUp)) board_.tombstones.erase(item.id);
                return RejectionReason::itemCapExceeded;
            }
            if (isBuried) board_.tombstones.erase(grave);
            board_.items.push_back(item);
        }
        return note(item.updatedAt);
    }

    std::optional<RejectionReason> checkItem(const BoardItem& item) {
        if (!BoardSpec::isValidRotation(item.rotationDegrees)) return RejectionReason::invalidRotation;
        if (!BoardSpec::isValidScale(item.scale)) return RejectionReason::invalidScale;
        json_.clear();
        const bool isWritten = Wire::encodeTo(json_, item, itemDepth).has_value();
        if (!isWritten || json_.size() > BoardSpec::maxItemJSONBytes) return RejectionReason::itemTooLarge;
        return std::nullopt;
    }

    // Deliberately without a comparison of instants: a delete always takes the item down, and only a later upsert
    // brings it back.
    std::optional<RejectionReason> remove(const Delete& deletion) {
        std::erase_if(board_.items, [&](const BoardItem& item) {
            const bool stays = mutant(Mutant::deleteByTimestamp) && item.updatedAt > deletion.deletedAt;
            return item.id == deletion.itemId && !stays;
        });
        bury(board_, deletion.itemId, deletion.deletedAt);
        takeDownDoodles(deletion.itemId, deletion.deletedAt, board_);
        return note(deletion.deletedAt);
    }

    std::optional<RejectionReason> paint(const SetBackground& change) {
        board_.background = change.background;
        return note(now_);
    }

    std::optional<RejectionReason> note(Instant change) {
        latest_ = std::max(latest_.value_or(change), change);
        return std::nullopt;
    }

    Board& board_;
    Instant now_;
    Items items_;
    std::optional<Instant> latest_;
    std::string json_;
};

} // namespace

ApplyResult apply(std::span<const Op> ops, Board board, Instant now) {
    ApplyResult result{.board = std::move(board), .rejected = {}, .applied = {}};
    const auto reject = [&](std::size_t index, RejectionReason reason) {
        result.rejected.push_back({.index = static_cast<std::int64_t>(index), .op = ops[index], .reason = reason});
    };
    if (ops.size() > BoardSpec::maxOpsPerBatch) {
        for (std::size_t i = 0; i < ops.size(); ++i) reject(i, RejectionReason::batchCapExceeded);
        return result;
    }
    result.applied.reserve(ops.size());
    Application application{result.board, now, Application::Items::unchecked};
    for (std::size_t i = 0; i < ops.size(); ++i) {
        if (const auto reason = application.take(ops[i])) {
            reject(i, *reason);
        } else {
            result.applied.push_back(ops[i]);
        }
    }
    application.finish();
    return result;
}

void reapply(std::span<const Op> ops, Board& board, Instant now) {
    Application application{board, now, Application::Items::checked};
    for (const auto& op : ops) application.take(op);
    application.finish();
}

bool wins(Instant incomingAt, PartnerID incomingAuthor, Instant existingAt, PartnerID existingAuthor) {
    if (incomingAt != existingAt) return incomingAt > existingAt;
    if (mutant(Mutant::equalVersionsReplace)) return true;
    return incomingAuthor == PartnerID::a && existingAuthor == PartnerID::b;
}

void takeDownDoodles(const UUID& itemId, Instant date, Board& board) {
    std::erase_if(board.items, [&](const BoardItem& item) {
        const auto* doodle = item.payload.as<DoodlePayload>();
        if (doodle == nullptr || doodle->on != itemId) return false;
        bury(board, item.id, date);
        return true;
    });
}

} // namespace lumaro::BoardLogic
