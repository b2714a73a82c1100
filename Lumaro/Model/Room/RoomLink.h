// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "LumaroCore/SyncClient/SyncClient.h"

#include <cstddef>
#include <expected>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// What this device lets the partner see of its person.
using OwnPresence = ClientMessage::Presence;

/// A device's line to its couple's room, as the application holds it: the sync client and its outbox may live on a
/// thread of their own, and all of this goes there and comes from there in order. Dropping it ends the line once all
/// that was sent is stored, and the listener has heard so; what the outbox holds stays.
class RoomLink {
public:
    /// Called on the application's thread, never from within a call to the link but `send` of one that lives on the
    /// same thread. It may call the link from within, but not drop it.
    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;

        /// Comes first: what the outbox holds from earlier, oldest first.
        virtual void opened(std::vector<PendingBatch> waiting) = 0;
        /// Instead of all else: there is no outbox to work with.
        virtual void couldNotOpen(const std::string& why) = 0;
        /// A message of the room, in its order, and how many batches wait now.
        virtual void received(const ServerMessage& message, std::size_t pending) = 0;
        virtual void stateChanged(const ConnectionState& state) = 0;
        /// The batch is on disk, and survives whatever comes.
        virtual void stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) = 0;
        virtual void notStored(const UUID& batchId, const SendError& why) = 0;
    };

    RoomLink() = default;
    RoomLink(const RoomLink&) = delete;
    RoomLink& operator=(const RoomLink&) = delete;
    virtual ~RoomLink() = default;

    virtual void send(const UUID& batchId, std::vector<Op> ops) = 0;
    virtual void sendPresence(OwnPresence presence) = 0;
    virtual void holdMedia(const UUID& id) = 0;
    virtual void releaseMedia(const UUID& id) = 0;
    /// The network changed or the machine woke.
    virtual void retryNow() = 0;
};

/// Opens such lines.
class RoomLinks {
public:
    struct Address {
        std::string serverURL;
        CoupleToken token;
        std::string deviceId;
        std::vector<UUID> heldMedia; ///< from before
    };

    RoomLinks() = default;
    RoomLinks(const RoomLinks&) = delete;
    RoomLinks& operator=(const RoomLinks&) = delete;
    virtual ~RoomLinks() = default;

    /// A line that connects by itself. The error says why there is none, for the log.
    virtual std::expected<std::unique_ptr<RoomLink>, std::string> open(Address address,
                                                                       RoomLink::Listener& listener) = 0;
};

} // namespace lumaro
