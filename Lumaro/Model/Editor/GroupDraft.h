// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/EditParts.h"

#include <expected>
#include <span>
#include <vector>

namespace lumaro {

/// Where several items lie together: the middle of the rectangle around them, and how they were turned and scaled about
/// it since a hand took them.
struct GroupFrame {
    Point middle;
    Size size;       ///< of the rectangle, before it is turned, with its scale
    double tilt = 0; ///< degrees
    double scale = 1;
    bool canResize = false;

    bool operator==(const GroupFrame&) const = default;
};

/// The rectangle around these items as the board has them.
GroupFrame frameOf(const Board& board, std::span<const UUID> ids);

/// Several items in the hand, moved, turned and scaled as one about their common middle. They keep how they lie to one
/// another: they stop together where the first of them comes to the largest tilt, the smallest or the largest scale, or
/// the canvas ends. Items of a kind that keeps its size change their places only.
///
/// As with one item only what the hand touches is held; all else follows the board. What is taken down or locked
/// meanwhile is let go of.
class GroupDraft {
public:
    using Done = std::expected<void, EditFault>;

    /// Items that are not on the board are left out.
    static GroupDraft of(const Board& shown, std::span<const UUID> ids);

    std::vector<UUID> ids() const;
    /// The items as the hand shows them, and the doodles drawn on them, in board order.
    std::vector<BoardItem> items() const;
    GroupFrame frame() const;

    Done moveTo(Point middle);
    /// In whole steps of `BoardSpec::rotationSnapDegrees`.
    Done turnTo(double degrees);
    /// Settles near 1.
    Done resizeTo(double scale);

    /// The board changed.
    void follow(const Board& shown);
    /// What the hand did to their places, with their rise to the front; none of what would change nothing.
    Edits::Result placing(const Board& board, Hand hand) const;

private:
    struct Member {
        UUID id;
        // As the hand took it.
        Point center;
        double tilt = 0;
        double scale = 1;
        bool canResize = false;
    };

    Point placeOf(const Member& member) const;
    Point shift() const;
    Board over(Board board, Hand hand) const;
    bool isMoved() const { return by_ != Point{} || turn_ != 0 || growth_ != 1; }

    std::vector<Member> members_;
    Board shown_; // the members and the doodles on them alone, as the board last had them
    GroupFrame start_;
    Point by_;
    double turn_ = 0;
    double growth_ = 1;
};

} // namespace lumaro
