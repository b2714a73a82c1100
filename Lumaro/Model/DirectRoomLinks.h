// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/RoomLink.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Support/UUIDSource.h"

namespace lumaro {

/// Lines whose sync client lives on the caller's thread: what a line on a thread of its own runs there.
class DirectRoomLinks final : public RoomLinks {
public:
    struct Ports {
        FileSystem& files;
        UUIDSource& ids;
        SyncClient::Ports client;
    };

    /// A folder for each couple is made in `outboxFolder`. The ports outlive the lines.
    DirectRoomLinks(std::string outboxFolder, Ports ports, SyncClient::Configuration configuration = {})
        : outboxFolder_(std::move(outboxFolder)), ports_(ports), configuration_(configuration) {}

    std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address, RoomLink::Listener& listener) override;

private:
    std::string outboxFolder_;
    Ports ports_;
    SyncClient::Configuration configuration_;
};

} // namespace lumaro
