// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/GroupInHand.h"
#include "Lumaro/Model/Editor/ItemInHand.h"
#include "Lumaro/Model/Editor/PenInHand.h"
#include "LumaroCore/BoardLogic/BoardVerb.h"
#include "LumaroCore/BoardLogic/Stacking.h"

#include <expected>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace lumaro {

/// A person's hands on the board: the item in the hand, the pen, acts of one step, and what can be taken back. Every
/// act goes to the board as one batch; one that is refused leaves the board as it is, and says why.
///
/// Owned by the application model and used on the main thread. A note that is not up yet survives a restart, by
/// `NoteDrafts`; nothing else here does.
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
    /// What is selected is chosen here, be it one or several.
    GroupInHand& group() { return group_; }
    const GroupInHand& group() const { return group_; }
    /// Everything that the hand holds over the board, as it shows it.
    std::vector<BoardItem> held() const;
    PenInHand& pen() { return pen_; }
    const PenInHand& pen() const { return pen_; }
    /// Neither while a new note is written, which is no act yet.
    bool canUndo() const;
    bool canRedo() const;
    /// A new note that was not let go of when the program ended waits to be written on.
    bool isNoteOffered() const { return offered_.has_value(); }
    /// The person is at it: something is in the hand, being written or drawn.
    bool isBusy() const { return inHand_.isBusy() || group_.draft() || pen_.session(); }

    // For the application.

    void setAuthor(PartnerID author) { acts_.setAuthor(author); }
    /// The shown board changed, and not by an act of the editor.
    void boardChanged();
    /// Another board comes, or none: draft, doodle, selection and history go with the one that was.
    void discardDraft();
    /// A new note from a run before, to be taken in the hand when the person comes to the board.
    void offerNote(BoardItem note);
    /// The window or the program closes: what is in the hand is let go of where it is, texts are written and ink is put
    /// up. What the board refuses stays in the hand.
    void layDown();
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
    /// Takes a new note for a day in the hand; it goes up when the hand lets go of it with something written on it. One
    /// that is offered comes first.
    EditorDone beginNote();
    /// Takes the note that is offered in the hand.
    EditorDone resumeNote();
    /// A copy with the doodles on it, a little aside.
    std::expected<UUID, EditorFault> duplicate(const UUID& id);

    // Acts of one step on the whole group, each one act.

    using VerbOn = std::function<BoardVerb(const UUID&)>;
    /// What the verb does not fit is left out.
    EditorAct carryOutOnGroup(const VerbOn& verbOn);
    EditorAct stackGroup(Edits::StackEnd end);
    /// The copies are selected then.
    EditorAct duplicateGroup();

    /// A small heart drawn on the item, or beside it when it is a doodle. What is selected stays so.
    EditorAct giveHeart(const UUID& id);
    /// What a card's button does; typing goes through the hand.
    EditorDone replacePayload(const UUID& id, Payload payload);

    // One's own acts, taken back and done again; stroke by stroke while the pen is in the hand.

    EditorAct undo() { return takeBack(UndoHistory::Way::undo); }
    EditorAct redo() { return takeBack(UndoHistory::Way::redo); }

private:
    EditorAct takeBack(UndoHistory::Way way);
    void followBoard(ItemInHand::By by);
    EditorAct performCopies(std::span<const UUID> ids, std::vector<UUID>& copies);
    std::expected<UUID, EditorFault> concludePutUp(const UUID& id, EditorDone done);

    Ports ports_;
    EditorActs acts_;
    ItemInHand inHand_;
    GroupInHand group_;
    PenInHand pen_;
    std::optional<BoardItem> offered_;
};

} // namespace lumaro
