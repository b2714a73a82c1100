// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/EditorActs.h"
#include "Lumaro/Model/Editor/GroupDraft.h"
#include "Lumaro/Model/Editor/ItemInHand.h"

#include <optional>
#include <span>
#include <vector>

namespace lumaro {

/// Several items that a person has selected, and what the hand does to all of them in one act. A group is two or more;
/// one alone is `ItemInHand`'s, and while that one is selected there is no group. Locked items are in no group, nor are
/// doodles drawn on an item of it, which go with that.
class GroupInHand {
public:
    /// Both outlive this.
    GroupInHand(EditorActs& acts, ItemInHand& single) : acts_(acts), single_(single) {}
    GroupInHand(const GroupInHand&) = delete;
    GroupInHand& operator=(const GroupInHand&) = delete;
    ~GroupInHand() = default;

    bool isSelected() const { return !single_.selection() && !members_.empty(); }
    /// In the order in which they were selected; none when no group is.
    std::span<const UUID> members() const { return isSelected() ? std::span{members_} : std::span<const UUID>{}; }
    /// The members, or the one item that is selected.
    std::vector<UUID> selection() const;
    /// What these come to: nothing, one item, or a group.
    void select(std::vector<UUID> ids);
    /// The same without those that are locked, also when only one is left.
    void selectUnlocked(std::vector<UUID> ids) { select(grouped(std::move(ids))); }
    /// Adds one to what is selected, or takes it out.
    void toggle(const UUID& id);

    const std::optional<GroupDraft>& draft() const { return draft_; }
    GroupFrame frame() const { return draft_ ? draft_->frame() : frameOf(acts_.board(), members()); }

    EditorDone beginGesture();
    EditorDone moveTo(Point middle);
    EditorDone turnTo(double degrees);
    EditorDone resizeTo(double scale);
    /// One act: their new places, and their rise to the front.
    EditorDone endGesture();
    /// Lets go of them where the board has them.
    void cancel();

    /// For the editor, which tells of it: the shown board changed.
    void follow();

private:
    template <class Change>
    EditorDone changeInHand(Change change);
    std::vector<UUID> grouped(std::vector<UUID> ids) const;

    EditorActs& acts_;
    ItemInHand& single_;
    std::vector<UUID> members_;
    std::optional<GroupDraft> draft_;
};

} // namespace lumaro
