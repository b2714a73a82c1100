// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/GroupInHand.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

using Update = Announcer::Update;

bool isDrawnOnOneOf(const BoardItem& item, std::span<const UUID> ids) {
    return std::ranges::any_of(ids, [&](const UUID& id) { return Edits::isDrawnOn(item, id); });
}

} // namespace

std::vector<UUID> GroupInHand::grouped(std::vector<UUID> ids) const {
    const auto& board = acts_.board();
    for (auto id = ids.begin(); id != ids.end(); ++id) ids.erase(std::remove(id + 1, ids.end(), *id), ids.end());
    std::erase_if(ids, [&](const UUID& id) {
        const auto* const item = board.find(id);
        return item == nullptr || Edits::isLocked(board, *item);
    });
    auto members = ids;
    std::erase_if(members, [&](const UUID& id) { return isDrawnOnOneOf(*board.find(id), ids); });
    return members;
}

std::vector<UUID> GroupInHand::selection() const {
    if (single_.selection()) return {*single_.selection()};
    return members_;
}

void GroupInHand::select(std::vector<UUID> ids) {
    const Update update{acts_.announcer()};
    draft_.reset();
    if (ids.size() > 1) ids = grouped(std::move(ids));
    const bool isGroup = ids.size() > 1;
    single_.select(ids.size() == 1 ? std::optional{ids.front()} : std::nullopt);
    members_ = isGroup ? std::move(ids) : std::vector<UUID>{};
}

void GroupInHand::toggle(const UUID& id) {
    auto ids = selection();
    const auto* const item = acts_.board().find(id);
    if (std::erase(ids, id) == 0) {
        if (!ids.empty() && item != nullptr && Edits::isLocked(acts_.board(), *item)) {
            return static_cast<void>(acts_.conclude(EditorDone{std::unexpected(EditFault::locked)}));
        }
        ids.push_back(id);
    }
    select(std::move(ids));
}

void GroupInHand::follow() {
    if (single_.selection()) {
        members_.clear();
        draft_.reset();
    }
    if (draft_) draft_->follow(acts_.board());
    if (members_.empty()) return;
    auto left = grouped(members_);
    // One alone is no group any more, but is not taken out of the hand.
    if (left.size() > 1 || (draft_ && !left.empty())) {
        members_ = std::move(left);
        return;
    }
    draft_.reset();
    members_.clear();
    if (!left.empty() && !single_.selection()) single_.select(left.front());
}

EditorDone GroupInHand::beginGesture() {
    const Update update{acts_.announcer()};
    if (!isSelected()) return acts_.conclude(EditorDone{std::unexpected(EditFault::noSuchItem)});
    draft_ = GroupDraft::of(acts_.board(), members_);
    return acts_.conclude(EditorDone{});
}

template <class Change>
EditorDone GroupInHand::changeInHand(Change change) {
    // A view may still move what the application has taken out of the hand: nothing to tell people about.
    if (!draft_) return std::unexpected(EditFault::noSuchItem);
    const GroupDraft::Done done = change(*draft_);
    return acts_.conclude(done ? EditorDone{} : EditorDone{std::unexpected(EditorFault{done.error()})});
}

EditorDone GroupInHand::moveTo(Point middle) {
    return changeInHand([&](GroupDraft& draft) { return draft.moveTo(middle); });
}

EditorDone GroupInHand::turnTo(double degrees) {
    return changeInHand([&](GroupDraft& draft) { return draft.turnTo(degrees); });
}

EditorDone GroupInHand::resizeTo(double scale) {
    return changeInHand([&](GroupDraft& draft) { return draft.resizeTo(scale); });
}

EditorDone GroupInHand::endGesture() {
    const Update update{acts_.announcer()};
    if (!draft_) return {};
    const auto draft = std::move(*draft_);
    draft_.reset();
    auto done = doneOf(acts_.perform(draft.placing(acts_.board(), acts_.hand())));
    follow();
    return acts_.conclude(std::move(done));
}

void GroupInHand::cancel() {
    const Update update{acts_.announcer()};
    draft_.reset();
    follow();
    acts_.announce();
}

} // namespace lumaro
