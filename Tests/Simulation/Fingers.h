// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/EditorModel.h"
#include "Samples/Samples.h"

namespace lumaro::simulation {

/// What a person does at the editor: whatever comes to mind, also what makes no sense just now.
class Fingers {
public:
    Fingers(EditorModel& editor, const Board& shown, samples::Random& random)
        : editor_(editor), shown_(shown), random_(random) {}

    void play();

private:
    UUID anyItem();
    Point anyPlace();
    void putUp();
    void hold();
    void write();
    void draw();

    EditorModel& editor_;
    const Board& shown_;
    samples::Random& random_;
};

} // namespace lumaro::simulation
