// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardModel/Op.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumaro {

/// A batch that waits for the room's ack.
struct OutboxBatch {
    UUID batchId; ///< travels in the message, and comes back in the ack
    std::vector<Op> ops;
    Instant createdAt;
    std::int64_t sequence = 0; ///< its place in the outbox, which gives it on append

    /// The name of its file: names sort as sequences do.
    std::string fileName() const;

    void hashInto(Hasher& hasher) const;
    bool operator==(const OutboxBatch&) const = default;
};

} // namespace lumaro
