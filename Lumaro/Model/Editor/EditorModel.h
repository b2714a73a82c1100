// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/ItemInHand.h"
#include "Lumaro/Model/Editor/PenInHand.h"
#include "LumaroCore/BoardLogic/BoardVerb.h"

#include <expected>
#include <optional>
#include <string_view>

namespace lumaro {

/// A person's hands on the board: the item in the hand, the pen, acts of one step, and what can be taken back. Every
/// act goes to the board as one batch; one that is refused leaves the board as it is, and says why.
///
/// Owned by the application model and used on the main thread. Nothing here survives a restart.
class EditorModel {
public:
    struct Ports {
        EditableBoard& board;
        UUIDSource& ids;
        WallClock& clock;
        Sleeper& sleeper;
        Announcer& announcer;
    };

    explicit EditorModel(Ports ports);
    EditorModel(const EditorModel&) = delete;
    EditorModel& operator=(const EditorModel&) = delete;
    ~EditorModel() = default;

    ItemInHand& inHand() { return inHand_; }
    const ItemInHand& inHand() const { return inHand_; }
    PenInHand& pen() { return pen_; }
    const PenInHand& pen() const { return pen_; }
    bool canUndo() const { return acts_.can(UndoHistory::Way::undo) || inHand_.hasUnwritten(); }
    bool canRedo() const { return acts_.can(UndoHistory::Way::redo); }
    /// The person is at it: something is in the hand, being written or drawn.
    bool isBusy() const { return inHand_.isBusy() || pen_.session(); }

    // For the application.

    void setAuthor(PartnerID author) { acts_.setAuthor(author); }
    /// The shown board changed, and not by an act of the editor.
    void boardChanged();
    /// Another board comes, or none: draft, doodle, selection and history go with the one that was.
    void discardDraft();
    /// The batch could not be stored and is shown no more: it cannot be taken back.
    void withdraw(const UUID& batch);

    // Acts of one step.

    /// Does what the verb means, as every other way to the board does.
    EditorAct carryOut(const BoardVerb& verb);
    /// In an open spot, or at `at`; the media that the payload names are in store already. A note that has a time to
    /// come down gets a lifespan from now. Selects the item.
    std::expected<UUID, EditorFault> putUp(Payload payload, std::optional<Point> at = std::nullopt);
    /// A note of these lines that comes down after its lifespan, in an open spot or at `at`.
    std::expected<UUID, EditorFault> pasteText(std::string_view text, std::optional<Point> at = std::nullopt);
    /// A copy with the doodles on it, a little aside.
    std::expected<UUID, EditorFault> duplicate(const UUID& id);
    /// What a card's button does; typing goes through the hand.
    EditorDone replacePayload(const UUID& id, Payload payload);

    // One's own acts, taken back and done again.

    EditorAct undo() { return takeBack(UndoHistory::Way::undo); }
    EditorAct redo() { return takeBack(UndoHistory::Way::redo); }

private:
    EditorAct takeBack(UndoHistory::Way way);
    std::expected<UUID, EditorFault> concludePutUp(const UUID& id, EditorDone done);

    Ports ports_;
    EditorActs acts_;
    ItemInHand inHand_;
    PenInHand pen_;
};

} // namespace lumaro
