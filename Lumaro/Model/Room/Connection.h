// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Media/MediaTransfer.h"
#include "Lumaro/Model/News/Announcer.h"
#include "Lumaro/Model/Room/RoomLink.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace lumaro {

/// How the room can be reached.
struct LineState {
    ConnectionState connection;
    /// The line was asked for and its outbox is being read: what waits there is not shown yet.
    bool isOpening = false;
    std::size_t pendingBatches = 0; ///< in the outbox
    bool lastSendQueued = false;
    bool connectionRejected = false; ///< the room refused this device's token
};

/// The one line to the couple's room, and the pictures that go along beside it.
class Connection final : private RoomLink::Listener, private MediaTransfer::Listener {
public:
    /// All outlive the connection.
    struct Ports {
        Sleeper& sleeper;
        Log& log;
        HttpClient& http;
        BackgroundRunner& background;
        RoomLinks& rooms;
    };

    /// Called on the main thread, within an update of the announcer. It may call the connection, but not close it.
    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;

        /// The line is there; these batches waited in the outbox.
        virtual void opened(std::vector<PendingBatch> waiting) = 0;
        /// A message of the room, but for its errors.
        virtual void received(const ServerMessage& message) = 0;
        /// The room no longer accepts this device's token.
        virtual void refused() = 0;
        virtual void stored(const UUID& batchId) = 0;
        virtual void notStored(const UUID& batchId) = 0;
        /// The picture will never be in the room.
        virtual void couldNotGoUp(const UUID& mediaId, MediaFault why) = 0;
    };

    Connection(Ports ports, LineState& state, MediaCache& media, Announcer& announcer, Listener& listener)
        : ports_(ports), state_(state), media_(media), announcer_(announcer), listener_(listener) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() override { dropLine(); }

    struct Address {
        std::string serverURL;
        CoupleToken token;
        std::string deviceId;
    };
    /// A line of this couple in place of the one that was.
    void open(Address address);
    void close();
    bool isOpen() const { return link_ != nullptr; }

    /// What follows does nothing without a line.

    void send(const UUID& batchId, std::vector<Op> ops);
    void sendPresence(OwnPresence presence);
    /// Fetches the pictures that the board shows.
    void want(const Board& board);
    /// The network changed or the computer woke.
    void retryNow();
    /// Stores a picture and sends it to the room; `then` puts up the item that names it.
    void storeMedia(const UUID& id, std::string bytes, MediaTransfer::Stored then);

private:
    void opened(std::vector<PendingBatch> waiting) override;
    void couldNotOpen(const std::string& why) override;
    void received(const ServerMessage& message, std::size_t pending) override;
    void stateChanged(const ConnectionState& state) override;
    void stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) override;
    void notStored(const UUID& batchId, const SendError& why) override;

    void arrived(const UUID& id) override;
    void wentUp(const UUID& id) override;
    void couldNotGoUp(const UUID& id, MediaFault why) override;

    void take(const ServerMessage::Error& error);
    void dropLine();
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "app", message); }

    Ports ports_;
    LineState& state_;
    MediaCache& media_;
    Announcer& announcer_;
    Listener& listener_;
    std::string who_; ///< the token as it may be logged
    std::unique_ptr<RoomLink> link_;
    std::unique_ptr<MediaTransfer> transfer_;
};

} // namespace lumaro
