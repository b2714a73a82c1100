// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/RoomLink.h"

#include <string>

namespace lumaro {

/// Lines to the room whose sockets and files live on a thread of their own: neither the disk nor the network holds up
/// the thread that opens them, which has a Qt event loop.
class ThreadedRoomLinks final : public RoomLinks {
public:
    /// A folder for each couple is made in `outboxFolder`. The log takes lines from any thread and outlives the lines.
    ThreadedRoomLinks(std::string outboxFolder, Log& log) : outboxFolder_(std::move(outboxFolder)), log_(log) {}

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& listener) override;

private:
    std::string outboxFolder_;
    Log& log_;
};

} // namespace lumaro
