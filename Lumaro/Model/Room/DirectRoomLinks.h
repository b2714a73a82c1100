// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Room/RoomLink.h"
#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Support/UUIDSource.h"

namespace lumaro {

/// A line whose sync client lives on the caller's thread.
class DirectRoomLink : public RoomLink, private SyncClient::Listener {
public:
    /// Connects after this call has returned. The ports outlive it.
    DirectRoomLink(RoomLinks::Address address, DurableOutbox outbox, SyncClient::Configuration configuration,
                   SyncClient::Ports ports, RoomLink::Listener& listener);

    SyncClient& client() { return client_; }

    void send(const UUID& batchId, std::vector<Op> ops) override;
    void sendPresence(OwnPresence presence) override;
    void holdMedia(const UUID& id) override { client_.holdMedia(id); }
    void releaseMedia(const UUID& id) override { client_.releaseMedia(id); }
    void retryNow() override { client_.retryNow(); }

private:
    void begin();
    void received(const ServerMessage& message) override { listener_.received(message, client_.pendingCount()); }
    void stateChanged(const ConnectionState& state) override { listener_.stateChanged(state); }

    RoomLink::Listener& listener_;
    SyncClient client_;
    std::unique_ptr<Sleeper::Wait> beginning_;
};

/// Opens such lines, with their outboxes in one folder.
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
