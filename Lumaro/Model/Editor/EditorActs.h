// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Board/EditableBoard.h"
#include "Lumaro/Model/Editor/EditorFault.h"
#include "Lumaro/Model/Editor/UndoHistory.h"
#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/BoardLogic/EditParts.h"
#include "LumaroCore/Support/WallClock.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumaro {

/// What the editor did.
using EditorDone = std::expected<void, EditorFault>;
/// The batch that an act of the editor became; none when it would have changed nothing.
using EditorAct = std::expected<std::optional<UUID>, EditorFault>;

/// The one way on which acts of this person's hands reach the board, each as one batch, and the history by which they
/// are taken back. An act that is refused leaves the board as it is.
class EditorActs {
public:
    /// All outlive this.
    struct Ports {
        EditableBoard& board;
        WallClock& clock;
        Announcer& announcer;
    };

    /// `acted` hears of each act that the board shows.
    EditorActs(Ports ports, std::function<void()> acted) : ports_(ports), acted_(std::move(acted)) {}

    const Board& board() const { return ports_.board.board(); }
    /// In whose name and when an edit of now is made.
    Hand hand() const { return {.author = author_, .now = ports_.clock.now()}; }
    void setAuthor(PartnerID author) { author_ = author; }

    /// An act that can be taken back. Those of one `session` on one version after the other become one step. A note is
    /// not written once its day is over, so that nothing comes up that the room would not take.
    EditorAct perform(std::expected<std::vector<Op>, EditorFault> ops,
                      std::optional<std::uint64_t> session = std::nullopt);
    EditorAct takeBack(UndoHistory::Way way);
    bool can(UndoHistory::Way way) const { return history_.can(way); }
    /// The batch could not be stored and is shown no more: it cannot be taken back.
    void withdraw(const UUID& batch) { history_.withdraw(batch); }
    void forget() { history_.clear(); }

    Announcer& announcer() { return ports_.announcer; }
    void announce() { ports_.announcer.changed(AppChange::editor); }
    /// Every verb of the editor ends here: people are told why not, and views that something may look different.
    template <class Result>
    Result conclude(Result done) {
        const Announcer::Update update{ports_.announcer};
        if (!done) ports_.announcer.say(std::string{textOf(done.error())});
        announce();
        return done;
    }

private:
    std::expected<UUID, ActFault> act(std::vector<Op> ops);

    Ports ports_;
    std::function<void()> acted_;
    PartnerID author_ = PartnerID::a;
    UndoHistory history_;
};

/// Whether it was done, whatever became of it.
EditorDone doneOf(const EditorAct& act);

} // namespace lumaro
