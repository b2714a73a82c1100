// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/DoodleSession.h"
#include "Lumaro/Model/Draft.h"
#include "Lumaro/Model/EditorFault.h"
#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/UndoHistory.h"
#include "LumaroCore/BoardLogic/BoardVerb.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/UUIDSource.h"
#include "LumaroCore/Support/WallClock.h"

#include <chrono>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace lumaro {

/// A person's hands on the board: what is selected, what is in the hand, what is being written or drawn, and what can
/// be taken back. Every act goes to the desk as one batch; one that is refused leaves the board as it is, and says why.
///
/// Owned by the application model and used on the main thread. What comes in from elsewhere never ends what is in the
/// hand. Nothing here survives a restart.
class EditorModel {
public:
    struct Ports {
        BoardDesk& desk;
        UUIDSource& ids;
        WallClock& clock;
        Sleeper& sleeper;
        Announcer& announcer;
    };
    using Done = std::expected<void, EditorFault>;
    /// The batch that an act became; none when it would have changed nothing.
    using Act = std::expected<std::optional<UUID>, EditorFault>;

    /// A typed text goes out when the typing pauses so long.
    static constexpr std::chrono::milliseconds typingPause{600};

    explicit EditorModel(Ports ports) : ports_(ports) {}
    EditorModel(const EditorModel&) = delete;
    EditorModel& operator=(const EditorModel&) = delete;

    // For the application.

    void setAuthor(PartnerID author) { author_ = author; }
    /// The shown board changed, and not by an act of the editor.
    void setLiveItems(const Board& shown);
    /// Another board comes, or none: draft, doodle, selection and history go with the one that was.
    void discardDraft();
    /// The batch could not be stored and is shown no more: it cannot be taken back.
    void withdraw(const UUID& batch);

    // What there is to show.

    const std::optional<UUID>& selection() const { return selection_; }
    /// In the hand, over the board; when it is gone, it waits for `putBack` or `cancel`.
    const std::optional<Draft>& draft() const { return draft_; }
    /// Whether the one in the hand is being written on.
    bool isEditing() const { return isEditing_; }
    const std::optional<DoodleSession>& doodle() const { return doodle_; }
    bool canUndo() const { return history_.can(UndoHistory::Way::undo) || (draft_ && draft_->hasUnwritten()); }
    bool canRedo() const { return history_.can(UndoHistory::Way::redo); }
    /// The person is at it: something is in the hand, being written or drawn.
    bool isBusy() const { return isGesture_ || isEditing_ || doodle_; }

    void select(std::optional<UUID> id);

    // One item in the hand. Taking another one writes and lets go of the one that was.

    Done beginGesture(const UUID& id);
    Done moveTo(Point center);
    Done turnTo(double degrees);
    Done resizeTo(double scale);
    /// One act: its new place, and its rise to the front.
    Done endGesture();

    Done beginEditing(const UUID& id);
    Done changeText(PMNode text);
    Done changePayload(Payload payload);
    /// Writes what is not written yet. When that is refused the editing goes on, so that nothing typed is lost.
    Done endEditing();

    /// Lets go of what is in the hand without writing what is not written yet.
    void cancel();
    /// Puts what was taken down while it was in the hand up again, as the hand shows it, and lets go of it.
    Done putBack();

    // Acts of one step.

    /// Does what the verb means, as every other way to the board does.
    Act carryOut(const BoardVerb& verb);
    /// In an open spot, or at `at`; the media that the payload names are in store already. A note that has a time to
    /// come down gets a lifespan from now. Selects the item.
    std::expected<UUID, EditorFault> putUp(Payload payload, std::optional<Point> at = std::nullopt);
    /// A note of these lines that comes down after its lifespan.
    std::expected<UUID, EditorFault> pasteText(std::string_view text);
    /// A copy with the doodles on it, a little aside.
    std::expected<UUID, EditorFault> duplicate(const UUID& id);
    Done move(const UUID& id, Point center);
    Done takeDown(const UUID& id);
    Done keep(const UUID& id);
    Done unkeep(const UUID& id);
    /// What a card's button does; typing goes through `changePayload`.
    Done replacePayload(const UUID& id, Payload payload);
    Done setBackground(BackgroundID background);

    // Pen and eraser. A new session lets go of the one that was.

    void beginDoodle(std::optional<UUID> surface);
    Done editDoodle(const UUID& id);
    Done penDown(Point place, DoodleSession::Pen pen);
    void penTo(Point place);
    void penUp();
    void eraseAlong(Point from, Point to, double radius);
    /// Puts the ink up as one act. When that is refused the session goes on, so that no ink is lost.
    Done finishDoodle();
    void cancelDoodle();

    // One's own acts, taken back and done again.

    Act undo() { return takeBack(UndoHistory::Way::undo); }
    Act redo() { return takeBack(UndoHistory::Way::redo); }

private:
    using Ops = std::expected<std::vector<Op>, EditorFault>;

    const Board& board() const { return ports_.desk.board(); }
    Hand hand() const { return {.author = author_, .now = ports_.clock.now()}; }

    void say(std::string_view text) { ports_.announcer.say(std::string{text}); }
    void announce() { ports_.announcer.changed(AppChange::editor); }
    /// Every verb ends here: tells people why not, and the listener.
    template <class Result>
    Result conclude(Result done);
    std::expected<UUID, EditorFault> concludePutUp(const UUID& id, Done done);

    /// An act that can be taken back; none when it would change nothing.
    Act perform(Ops ops, std::optional<std::uint64_t> session = std::nullopt);
    std::expected<UUID, ActFault> act(std::vector<Op> ops);
    enum class By : std::uint8_t { oneself, others };
    void follow(const Board& shown, By by);
    Act takeBack(UndoHistory::Way way);

    Done takeInHand(const UUID& id);
    template <class Change>
    Done changeInHand(bool isHeld, Change change);
    template <class Change>
    Done changeContent(Change change);
    Done writeContent();
    Done settle();
    void settleAfterPause();
    void dropDraft();

    Ports ports_;
    PartnerID author_ = PartnerID::a;
    std::optional<UUID> selection_;
    std::optional<Draft> draft_;
    bool isGesture_ = false; // with a draft only; so is the next
    bool isEditing_ = false;
    std::uint64_t session_ = 0; // acts of one text editing are one step
    std::unique_ptr<Sleeper::Wait> pause_;
    std::optional<DoodleSession> doodle_;
    UndoHistory history_;
};

} // namespace lumaro
