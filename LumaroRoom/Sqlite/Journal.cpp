// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/Journal.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace lumaro {
namespace {

// Rows that are let pile up before they are forgotten together.
constexpr std::int64_t trimPortion = 2048;

std::size_t weightOf(const JournalStep& step) {
    std::size_t bytes = sizeof step;
    for (const auto& effect : step.effects) bytes += sizeof effect + effect.json.size();
    return bytes;
}

} // namespace

StoreResult<void> Journal::recover() {
    // Places are not used again, even when the rows that had them are gone.
    const auto last = database_.value<std::int64_t>(
        "SELECT max(coalesce((SELECT max(place) FROM journal), 0), coalesce((SELECT max(filed) FROM couples), 0))");
    if (!last) return std::unexpected(last.error());
    lastPlace_ = last->value_or(0);
    auto rows = database_.query(
        "SELECT couple, place, batch, at, background, tied_at, updated_at, kind, item, media, deleted_at, json FROM "
        "journal WHERE place > (SELECT filed FROM couples WHERE num = couple) ORDER BY place");
    std::int64_t couple = 0;
    std::optional<JournalStep> step;
    while (rows.next()) {
        std::int64_t coupleOfRow = 0;
        JournalStep read;
        std::optional<Instant> at;
        std::optional<JournalEffect::Kind> kind;
        rows >> coupleOfRow >> read.place >> read.batchId >> at;
        if (at) {
            read.at = *at;
            rows >> read.background >> read.threadTiedAt >> read.updatedAt;
            if (step) keep(couple, *std::exchange(step, std::nullopt));
            couple = coupleOfRow;
            step = std::move(read);
        } else {
            rows.skip(3);
        }
        rows >> kind;
        if (!kind || !step) continue;
        auto& effect = step->effects.emplace_back();
        effect.kind = *kind;
        rows >> effect.item >> effect.media >> effect.deletedAt >> effect.json;
    }
    if (step) keep(couple, *std::move(step));
    committed();
    return rows.ended();
}

// A row of the table is an effect; the first of a step has what is the step's, and stands for a step without effects
// too.
StoreResult<void> Journal::write(std::int64_t couple, const JournalStep* step, const JournalEffect* effect) {
    const auto ofStep = [&](auto member) { return step != nullptr ? std::optional{step->*member} : std::nullopt; };
    const auto ofEffect = [&](auto member) {
        return effect != nullptr ? std::optional{effect->*member} : std::nullopt;
    };
    return database_.run("INSERT INTO journal(place, couple, batch, at, background, tied_at, updated_at, kind, item, "
                         "media, deleted_at, json) VALUES(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12)",
                         ++lastPlace_, couple, step != nullptr ? step->batchId : std::nullopt, ofStep(&JournalStep::at),
                         ofStep(&JournalStep::background), step != nullptr ? step->threadTiedAt : std::nullopt,
                         ofStep(&JournalStep::updatedAt), ofEffect(&JournalEffect::kind),
                         ofEffect(&JournalEffect::item), effect != nullptr ? effect->media : std::nullopt,
                         effect != nullptr ? effect->deletedAt : std::nullopt,
                         effect != nullptr ? std::optional<std::string_view>{effect->json} : std::nullopt);
}

StoreResult<void> Journal::append(std::int64_t couple, JournalStep step) {
    step.place = lastPlace_ + 1;
    // A row for each effect, and one for a step that has none; the first carries the step.
    const auto rows = std::max<std::size_t>(step.effects.size(), 1);
    for (std::size_t row = 0; row < rows; ++row) {
        const auto written =
            write(couple, row == 0 ? &step : nullptr, row < step.effects.size() ? &step.effects[row] : nullptr);
        if (!written) return written;
    }
    keep(couple, std::move(step));
    return {};
}

void Journal::keep(std::int64_t couple, JournalStep step) {
    auto& pending = touch(couple);
    bytes_ += weightOf(step);
    if (step.batchId) pending.batches.insert(*step.batchId);
    pending.steps.push_back(std::move(step));
}

void Journal::drop(Pending& pending, std::size_t from, std::size_t to) {
    const auto begin = pending.steps.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = pending.steps.begin() + static_cast<std::ptrdiff_t>(to);
    for (const auto& step : std::ranges::subrange(begin, end)) {
        bytes_ -= weightOf(step);
        if (step.batchId) pending.batches.erase(*step.batchId);
    }
    pending.steps.erase(begin, end);
}

std::span<const JournalStep> Journal::stepsOf(std::int64_t couple) const {
    const auto found = couples_.find(couple);
    if (found == couples_.end()) return {};
    return std::span{found->second.steps}.subspan(found->second.checkpointed);
}

bool Journal::holdsBatch(std::int64_t couple, const UUID& batchId) const {
    const auto found = couples_.find(couple);
    if (found == couples_.end() || !found->second.batches.contains(batchId)) return false;
    const auto isIt = [&](const JournalStep& step) { return step.batchId == batchId; };
    return found->second.checkpointed == 0 || std::ranges::any_of(stepsOf(couple), isIt);
}

Journal::Pending& Journal::touch(std::int64_t couple) {
    auto& pending = couples_[couple];
    if (pending.steps.size() == pending.durable && pending.checkpointed == 0) touched_.push_back(couple);
    return pending;
}

void Journal::checkpointed(std::int64_t couple) {
    auto& pending = touch(couple);
    pending.checkpointed = pending.steps.size();
}

StoreResult<void> Journal::trim() {
    // Rows of this transaction are behind all that are checkpointed and durable.
    const auto end = waiting_.empty() ? durablePlace_ + 1 : waiting_.begin()->first;
    if (end - trimmedTo_ < trimPortion) return {};
    auto done = database_.run("DELETE FROM journal WHERE place < ?1", end);
    if (done) trimmedTo_ = end;
    return done;
}

std::vector<std::int64_t> Journal::longestWaiting(std::size_t count) const {
    std::vector<std::int64_t> couples;
    for (const auto couple : waiting_ | std::views::values) {
        if (couples.size() == count) break;
        couples.push_back(couple);
    }
    return couples;
}

void Journal::committed() {
    for (const auto couple : touched_) {
        const auto found = couples_.find(couple);
        if (found == couples_.end()) continue;
        auto& pending = found->second;
        if (pending.durable > 0) waiting_.erase(pending.steps.front().place);
        drop(pending, 0, pending.checkpointed);
        pending.durable = pending.steps.size();
        pending.checkpointed = 0;
        if (pending.steps.empty()) {
            couples_.erase(found);
        } else {
            waiting_.emplace(pending.steps.front().place, couple);
        }
    }
    touched_.clear();
    durablePlace_ = lastPlace_;
}

void Journal::rolledBack() {
    for (const auto couple : touched_) {
        const auto found = couples_.find(couple);
        if (found == couples_.end()) continue;
        auto& pending = found->second;
        drop(pending, pending.durable, pending.steps.size());
        pending.checkpointed = 0;
        if (pending.steps.empty()) couples_.erase(found);
    }
    touched_.clear();
}

} // namespace lumaro
