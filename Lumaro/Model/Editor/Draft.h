// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <expected>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace lumaro {

/// An item in the hand: what the hand does to it, over what the board has of it.
///
/// Only what the hand touches is held; all else follows the board, so that a partner's text comes in while the note is
/// being dragged. Nothing on the board ends a draft: when the item is taken down the draft keeps what was seen last.
class Draft {
public:
    using Done = std::expected<void, EditFault>;

    /// None when the item is not on the board.
    static std::optional<Draft> of(const Board& shown, const UUID& id);
    /// Of an item that is on no board yet.
    static Draft ofNew(BoardItem item);

    const UUID& id() const { return held_.front().id; }
    /// The item as the hand shows it, then the doodles drawn on it, which go with it. Author and instants mean nothing.
    std::vector<BoardItem> items() const;
    /// Whether it was taken down meanwhile.
    bool isGone() const { return isGone_; }
    /// Whether no board has had it yet.
    bool isNew() const { return isNew_; }
    /// Whether it holds a text or payload that is not written yet.
    bool hasUnwritten() const { return content_.has_value() && !isWritten_; }

    /// The hand takes hold of it: it comes to the front when it is let go.
    void touch() { isTouched_ = true; }
    Done moveTo(Point center);
    /// Snaps to whole steps of `BoardSpec::rotationSnapDegrees`, within the valid tilts.
    Done turnTo(double degrees);
    /// Snaps to the scale at which an item comes to rest.
    Done resizeTo(double scale);
    Done changeText(PMNode text);
    Done changePayload(Payload payload);
    /// Another paper or pin for a new note; its text stays what was typed.
    Done changeLook(std::optional<std::string> paper, std::optional<std::string> pin);

    /// The board changed.
    void follow(const Board& shown);

    /// What the hand did to its place, with its rise to the front; none of what would change nothing.
    Edits::Result placing(const Board& board, Hand hand) const;
    /// The text or payload, when it is not written yet.
    Edits::Result writing(const Board& board, Hand hand) const;
    /// The hand has let go: place, tilt and scale are the board's again.
    void dropPlace();
    /// The content is on the board. It still shows here, so that a text does not change under the hand.
    void setWritten() { isWritten_ = true; }
    /// Text or payload are the board's again.
    void dropContent() { content_.reset(); }

    /// Puts a new item up as the hand shows it.
    Edits::Result puttingUp(const Board& board, Hand hand) const;
    /// Puts the item up anew as the hand shows it, with the doodles that were on it. What the board remembers to have
    /// buried comes back under its id, later than its tombstone. The tombstone of another is known to the room alone
    /// and might be later than any instant known here, so that the room would refuse it: it gets a new id. The first op
    /// is the item's.
    Edits::Result puttingBack(const Board& board, UUIDSource& ids, Hand hand) const;

private:
    explicit Draft(std::vector<BoardItem> held) : held_(std::move(held)) {}

    /// A lock that came while somebody wrote takes no text from them: what is in the hand is finished, and stays
    /// locked.
    Edits::Result contentOps(const Board& board, Hand hand) const;

    std::vector<BoardItem> held_; // as the board last had them, the item first
    Edits::Placement placement_;
    std::optional<std::variant<PMNode, Payload>> content_;
    bool isWritten_ = false;
    bool isTouched_ = false;
    bool isGone_ = false;
    bool isNew_ = false;
};

} // namespace lumaro
