// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/Draft.h"
#include "Lumaro/Model/Editor/EditorActs.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace lumaro {

/// The item that a person has selected, and what the hand does to it: a gesture, writing, or both at once. Taking
/// another one in the hand writes and lets go of the one that was. What comes in from elsewhere never ends what is in
/// the hand.
class ItemInHand {
public:
    /// A typed text goes out when the typing pauses so long.
    static constexpr std::chrono::milliseconds typingPause{600};

    /// All outlive this.
    ItemInHand(EditorActs& acts, UUIDSource& ids, Sleeper& sleeper) : acts_(acts), ids_(ids), sleeper_(sleeper) {}
    ItemInHand(const ItemInHand&) = delete;
    ItemInHand& operator=(const ItemInHand&) = delete;
    ~ItemInHand() = default;

    const std::optional<UUID>& selection() const { return selection_; }
    /// In the hand, over the board; when it is gone, it waits for `putBack` or `cancel`.
    const std::optional<Draft>& draft() const { return draft_; }
    /// Whether it is being written on.
    bool isEditing() const { return isEditing_; }
    bool isBusy() const { return isGesture_ || isEditing_; }
    bool hasUnwritten() const { return draft_ && draft_->hasUnwritten(); }
    /// Whether a note is being written that no board has had yet. The partner sees nothing of it before it is let go.
    bool isNew() const { return draft_ && draft_->isNew(); }

    void select(std::optional<UUID> id);

    EditorDone beginGesture(const UUID& id);
    EditorDone moveTo(Point center);
    EditorDone turnTo(double degrees);
    EditorDone resizeTo(double scale);
    /// One act: its new place, and its rise to the front.
    EditorDone endGesture();

    EditorDone beginEditing(const UUID& id);
    /// Takes a note in the hand that is on no board, to be written on. When the hand lets go of it, it goes up if it
    /// has text in it, as one act, and else is gone.
    EditorDone beginNote(BoardItem note);
    /// Another paper or pin for the new note.
    EditorDone changeLook(std::optional<std::string> paper, std::optional<std::string> pin);
    EditorDone changeText(PMNode text);
    EditorDone changePayload(Payload payload);
    /// Writes what is not written yet. When that is refused the editing goes on, so that nothing typed is lost.
    EditorDone endEditing();

    /// Lets go of what is in the hand without writing what is not written yet.
    void cancel();
    /// Puts what was taken down while it was in the hand up again, as the hand shows it, and lets go of it.
    EditorDone putBack();

    // For the editor, which tells of it.

    /// Hears of the new note at each pause of the typing, and with none when there is none any more.
    using NewNote = std::function<void(const BoardItem* note)>;
    void onNewNote(NewNote tell) { tellNewNote_ = std::move(tell); }
    /// There is none any more, though none was in the hand.
    void forgetNewNote() { tellNewNote_(nullptr); }

    enum class By : std::uint8_t { oneself, others };
    /// The shown board changed.
    void follow(By by);
    /// Writes what was typed; what is typed from here on is a step of its own.
    EditorDone writeNow();
    /// What was written is the board's again, whatever the board has now.
    void showBoardsContent();

private:
    EditorDone letGoOfOther(const UUID& id);
    EditorDone takeInHand(const UUID& id);
    template <class Change>
    EditorDone changeInHand(bool isHeld, Change change);
    template <class Change>
    EditorDone changeContent(Change change);
    EditorDone writeContent();
    EditorDone settle();
    EditorDone settleNew();
    void settleAfterPause();
    void drop();

    EditorActs& acts_;
    UUIDSource& ids_;
    Sleeper& sleeper_;
    std::optional<UUID> selection_;
    std::optional<Draft> draft_;
    bool isGesture_ = false; // with a draft only; so is the next
    bool isEditing_ = false;
    std::uint64_t session_ = 0; // acts of one text editing are one step
    std::unique_ptr<Sleeper::Wait> pause_;
    NewNote tellNewNote_ = [](const BoardItem*) {};
};

} // namespace lumaro
