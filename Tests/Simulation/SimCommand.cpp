// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimCommand.h"

#include "Tests/Simulation/Hands.h"

#include <utility>

namespace lumaro::simulation {

SimCommand::SimCommand(SimDevice& device, DurableOutbox outbox)
    : device_(device), transport_(device.parts().network, device.index()),
      http_(device.parts().time, device.parts().network, device.parts().server, device.index()),
      session_({.serverURL = serverURL,
                .token = *device.token(),
                .deviceId = device.deviceId(),
                .outbox = std::move(outbox),
                .lastKnown = device.lastKnown,
                .configuration = device.configuration()},
               {.transport = transport_,
                .http = http_,
                .sleeper = device.parts().time,
                .clock = device.clock(),
                .log = silence_},
               device.ids(), *this) {
    session_.client().connect();
}

bool SimCommand::knows(const Members& members) const {
    return session_.online() == members.paired() && session_.paired() == members.paired() &&
           session_.names() == members.names;
}

void SimCommand::act(std::vector<Op> ops) {
    auto& coverage = device_.parts().coverage;
    if (ops.size() > BoardSpec::maxOpsPerBatch) coverage.note(Met::actsInManyBatches);
    const auto first = session_.client().outbox().nextSequence();
    const auto outcome = session_.act(std::move(ops));
    for (const auto& batch : session_.client().pending()) {
        if (batch.sequence >= first) device_.stored(batch);
    }
    if (!outcome) {
        coverage.note(Met::actsRefusedByDisk);
    } else if (outcome->way == SendOutcome::Way::queued) {
        coverage.note(Met::actsQueued);
    }
    device_.parts().trace.add("act", device_.index(), outcome ? "stored" : "refused");
}

void SimCommand::handle(samples::Random& random) {
    act(Hands{board().shown(), {slot(), device_.clock().now()}, device_.ids(), random}.anyAct());
}

void SimCommand::reconnect() {
    session_.client().disconnect();
    session_.client().connect();
}

} // namespace lumaro::simulation
