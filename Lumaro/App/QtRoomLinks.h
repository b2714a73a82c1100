// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Room/DirectRoomLinks.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/QtWebSocketTransport.h"

#include <memory>
#include <string>

namespace lumaro {

/// Lines over Qt's network and this computer's disk, in the event loop of the thread that makes them.
class QtRoomLinks final : public RoomLinks {
public:
    /// A folder for each couple is made in `outboxFolder`. The log takes lines from that thread and outlives the lines.
    QtRoomLinks(std::string outboxFolder, Log& log);

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& listener) override;

private:
    PosixFileSystem files_;
    SystemRandom ids_;
    SystemClock clock_;
    QtSleeper sleeper_;
    QtHttpClient http_;
    QtWebSocketTransport transport_;
    DirectRoomLinks links_;
};

} // namespace lumaro
