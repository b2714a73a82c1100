// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Payload.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace lumaro {

/// The strokes of a doodle that is being drawn, and the steps by which they came about: each a line of the pen or a
/// sweep of the eraser. A value. A step holds only the strokes that it took away and put in their place.
class InkHistory {
public:
    /// Steps it remembers, as many as a doodle has strokes; the oldest go first.
    static constexpr std::size_t limit = BoardSpec::maxStrokesPerDoodle;

    explicit InkHistory(std::vector<InkStroke> strokes = {}) : strokes_(std::move(strokes)) {}

    const std::vector<InkStroke>& strokes() const { return strokes_; }
    bool canUndo() const { return !done_.empty(); }
    bool canRedo() const { return !undone_.empty(); }

    /// One step: these strokes instead of those there were. None when they are the same.
    void record(std::vector<InkStroke> now);
    /// Nothing where there is nothing to take back, or to do again.
    void undo() { step(done_, undone_); }
    void redo() { step(undone_, done_); }

private:
    struct Step {
        std::size_t at = 0; ///< where in the strokes
        std::size_t put = 0;
        std::vector<InkStroke> taken;
    };
    using Stack = std::deque<Step>; // the next one last

    void step(Stack& from, Stack& to);
    Step replaced(const Step& step);

    std::vector<InkStroke> strokes_;
    Stack done_;
    Stack undone_;
};

} // namespace lumaro
