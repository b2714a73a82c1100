// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Room/RoomLink.h"

#include <functional>
#include <memory>
#include <utility>

namespace lumaro {

/// Lines to the room whose sockets and files live on a thread of their own: neither the disk nor the network holds up
/// the thread that opens them, which has a Qt event loop. They may be dropped from within a call to their listener too.
class ThreadedRoomLinks final : public RoomLinks {
public:
    /// Makes what opens one line, on that line's own thread, which has a Qt event loop. It lives and ends there.
    using MakeLinks = std::function<std::unique_ptr<RoomLinks>()>;

    explicit ThreadedRoomLinks(MakeLinks make) : make_(std::move(make)) {}

    /// Never an error: a line that does not open says so to its listener.
    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& listener) override;

private:
    MakeLinks make_;
};

} // namespace lumaro
