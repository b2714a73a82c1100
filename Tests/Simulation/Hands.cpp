// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Hands.h"

#include "LumaroCore/BoardLogic/Expiry.h"

#include <iterator>
#include <utility>

namespace lumaro::simulation {
namespace {

using samples::chance;
using samples::pick;

// The ids that wild ops are about.
constexpr std::uint64_t wildIds = 8;

std::vector<Op> orNothing(Edits::Result result) {
    return result ? std::move(*result) : std::vector<Op>{};
}

} // namespace

Point Hands::anyPlace() {
    return {static_cast<double>(pick(random_, 0, 1600)), static_cast<double>(pick(random_, 0, 1000))};
}

// Some come down soon.
Payload Hands::noteOfToday() {
    if (chance(random_, 0.5)) return samples::plainNote("oranges");
    const auto expiresAt = hand_.now + std::chrono::seconds{pick(random_, 1, 90)};
    return NotePayload{pm::docOfLines("oranges"), "butter", "brass", expiresAt};
}

std::vector<Op> Hands::anyAct() {
    const int choice = pick(random_, 0, 99);
    if (choice < 8) return Edits::setBackground(static_cast<BackgroundID>(pick(random_, 0, 5)));
    if (choice < 12) return BoardLogic::expiryOps(shown_, hand_.now);
    if (choice < 16) return broughtBack();
    if (shown_.items.empty() || choice < 45) {
        auto payload = chance(random_, 0.7) ? noteOfToday() : samples::anyItem(random_, {}).payload;
        const auto at = chance(random_, 0.9) ? std::optional{anyPlace()} : std::nullopt;
        return orNothing(Edits::putUp(shown_, ids_.next(), std::move(payload), at, hand_));
    }
    return editOf(shown_.items[pick(random_, std::size_t{0}, shown_.items.size() - 1)]);
}

std::vector<Op> Hands::editOf(const BoardItem& item) {
    switch (pick(random_, 0, 12)) {
    case 0: return orNothing(Edits::turn(shown_, item.id, pick(random_, -30, 30), hand_));
    case 1: return orNothing(Edits::resize(shown_, item.id, pick(random_, 40, 220) / 100.0, hand_));
    case 2: return orNothing(Edits::raise(shown_, item.id, hand_));
    case 10: return orNothing(Edits::lower(shown_, item.id, hand_));
    case 11: return orNothing(Edits::lock(shown_, item.id, hand_));
    case 12: return orNothing(Edits::unlock(shown_, item.id, hand_));
    case 3: return orNothing(Edits::keep(shown_, item.id, hand_));
    case 4: return orNothing(Edits::unkeep(shown_, item.id, hand_));
    case 5:
        return orNothing(
            Edits::changePayload(shown_, item.id, samples::plainNote(chance(random_, 0.5) ? "bo" : "né"), hand_));
    case 6:
    case 7: return orNothing(Edits::takeDown(shown_, item.id, hand_));
    default: return orNothing(Edits::move(shown_, item.id, anyPlace(), hand_));
    }
}

std::vector<Op> Hands::fullBoard(std::size_t notes) {
    std::vector<Op> ops;
    for (std::size_t i = 0; i < notes; ++i) {
        auto put = orNothing(Edits::putUp(shown_, ids_.next(), samples::plainNote("note"), anyPlace(), hand_));
        std::ranges::move(put, std::back_inserter(ops));
    }
    std::ranges::move(wildOps(2 * wildIds), std::back_inserter(ops));
    return ops;
}

std::vector<Op> Hands::everythingMoved(std::size_t times) {
    std::vector<Op> ops;
    Hand hand = hand_;
    for (std::size_t i = 0; i < times; ++i) {
        hand.now += std::chrono::milliseconds{1};
        for (const auto& item : shown_.items) {
            std::ranges::move(orNothing(Edits::move(shown_, item.id, anyPlace(), hand)), std::back_inserter(ops));
        }
    }
    return ops;
}

std::vector<Op> Hands::wildOps(std::size_t count) {
    std::vector<Op> ops;
    for (std::size_t i = 0; i < count; ++i) ops.push_back(samples::anyOp(random_, wildIds));
    return ops;
}

std::vector<Op> Hands::broughtBack() {
    if (shown_.tombstones.empty()) return {};
    const auto place = pick(random_, std::size_t{0}, shown_.tombstones.size() - 1);
    const auto& id = std::next(shown_.tombstones.begin(), static_cast<std::ptrdiff_t>(place))->first;
    return orNothing(Edits::putUp(shown_, id, samples::plainNote("again"), anyPlace(), hand_));
}

} // namespace lumaro::simulation
