// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/DoodleSession.h"
#include "Lumaro/Model/Editor/EditorActs.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <optional>

namespace lumaro {

/// Pen and eraser. A new session lets go of the one that was.
class PenInHand {
public:
    /// Both outlive this.
    PenInHand(EditorActs& acts, UUIDSource& ids) : acts_(acts), ids_(ids) {}
    PenInHand(const PenInHand&) = delete;
    PenInHand& operator=(const PenInHand&) = delete;
    ~PenInHand() = default;

    /// What is being drawn; none while there is no pen in the hand.
    const std::optional<DoodleSession>& session() const { return session_; }

    /// New ink, on an item or on the glass.
    EditorDone begin(std::optional<UUID> surface);
    /// A doodle of the board.
    EditorDone edit(const UUID& id);
    EditorDone down(Point place, DoodleSession::Pen pen, DoodleSession::Touch touch = {});
    void moveTo(Point place, DoodleSession::Touch touch = {});
    void up();
    void eraseAlong(Point from, Point to, double radius);
    /// Stroke by stroke; nothing where there is none to take back, or to do again.
    void undo();
    void redo();
    /// Puts the ink up as one act. When that is refused the session goes on, so that no ink is lost.
    EditorDone finish();
    /// Lets go of the ink.
    void cancel();

private:
    bool isLocked(const UUID& id) const;

    EditorActs& acts_;
    UUIDSource& ids_;
    std::optional<DoodleSession> session_;
};

} // namespace lumaro
