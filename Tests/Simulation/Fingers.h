// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Editor/EditorModel.h"
#include "Samples/Samples.h"

namespace lumaro::simulation {

/// A person's random acts at the editor, also those that make no sense at the moment.
class Fingers {
public:
    Fingers(EditorModel& editor, const Board& shown, samples::Random& random)
        : editor_(editor), hand_(editor.inHand()), pen_(editor.pen()), shown_(shown), random_(random) {}

    void play();

private:
    UUID anyItem();
    Point anyPlace();
    void carryOut(const BoardVerb& verb);
    void putUp();
    void hold();
    void holdSeveral();
    void onSeveral();
    void write();
    void draw();

    EditorModel& editor_;
    ItemInHand& hand_;
    PenInHand& pen_;
    const Board& shown_;
    samples::Random& random_;
};

} // namespace lumaro::simulation
