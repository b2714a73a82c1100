// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/EditorFault.h"
#include "Lumaro/Model/Editor/InkHistory.h"
#include "LumaroCore/Geometry/InkSmoothing.h"

#include <cstddef>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lumaro {

/// A doodle while it is being drawn: new ink, or a doodle of the board under the pen and the eraser again. Places are
/// on the canvas. A value; the board knows nothing of it until it is finished.
class DoodleSession {
public:
    struct Pen {
        std::string ink; ///< the ink's name
        double width = 0;
    };
    /// What a pen tells beside its place.
    struct Touch {
        double seconds = 0;               ///< from any beginning
        std::optional<double> pressure{}; ///< from 0 to 1, if it tells
    };
    /// Samples of one line, some ten seconds of an uninterrupted one; a longer one goes on as the next, so that no
    /// frame has much of it to smooth.
    static constexpr std::size_t maxSamples = 2048;

    /// A new doodle on an item, or on the glass.
    explicit DoodleSession(std::optional<UUID> surface) : surface_(surface) {}
    /// The doodle of the board.
    static std::expected<DoodleSession, EditFault> over(const Board& board, const UUID& id);

    /// The doodle of the board that is being changed: it shows here meanwhile.
    const std::optional<UUID>& doodle() const { return doodle_; }
    const std::vector<InkStroke>& strokes() const { return sweep_ ? *sweep_ : history_.strokes(); }
    /// Whether there is ink, or less of it, that the board does not have.
    bool isChanged() const { return line_.has_value() || strokes() != original_; }
    /// Where the pen was since it went down; empty while it is up.
    std::span<const PenSample> samples() const {
        return line_ ? std::span{line_->samples} : std::span<const PenSample>{};
    }
    /// The width of the line under the pen; 0 while it is up.
    double penWidth() const { return line_ ? line_->pen.width : 0; }
    /// The line under the pen as it would be if the pen went up now. Takes O(n) of its length.
    std::optional<InkStroke> line() const;

    /// Refuses a stroke more than a doodle holds.
    std::expected<void, DoodleFault> penDown(Point place, Pen pen, Touch touch);
    /// Nothing without a pen down.
    void penTo(Point place, Touch touch);
    /// Pen or eraser leave the glass: the line, or the whole sweep, is one step.
    void penUp();
    void eraseAlong(Point from, Point to, double radius);

    // Stroke by stroke. What is under the pen or the eraser ends first, and is the first to be taken back.

    bool canUndo() const { return history_.canUndo() || line_ || sweep_; }
    bool canRedo() const { return history_.canRedo() && !line_ && !sweep_; }
    void undo();
    void redo();

    /// The act that puts the ink up; none when nothing was drawn or changed. A doodle without ink left is taken down.
    /// Ink whose doodle was taken down meanwhile goes up as a new one, and on the glass when its surface is gone or
    /// locked.
    std::expected<std::vector<Op>, EditorFault> finish(const Board& board, const UUID& newId, Hand hand);

private:
    struct Line {
        Pen pen;
        std::vector<PenSample> samples;
    };

    std::expected<std::vector<Op>, EditorFault> redraw(const Board& board, const BoardItem& doodle, Hand hand) const;
    std::expected<std::vector<Op>, EditorFault> putUp(const Board& board, const UUID& newId, Hand hand) const;

    std::optional<UUID> surface_;
    std::optional<UUID> doodle_;
    std::vector<InkStroke> original_;
    InkHistory history_;
    std::optional<Line> line_;
    std::optional<std::vector<InkStroke>> sweep_; // what the eraser has left so far
};

} // namespace lumaro
