// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/EditorModel.h"
#include "Samples/Samples.h"

namespace lumaro::simulation {

/// A person's random acts at the editor, also those that make no sense at the moment.
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
