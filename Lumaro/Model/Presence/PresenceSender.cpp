// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Presence/PresenceSender.h"

namespace lumaro {

void PresenceSender::sendSoon() {
    presenceCoalesceTask_ = sleeper_.wait(pause, [this] { connection_.sendPresence(state_.ownPresence); });
}

} // namespace lumaro
