// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/BoardSession.h"
#include "LumaroCtl/BoardCommands.h"
#include "LumaroCtl/Profile.h"
#include "Platform/Posix/FolderLock.h"
#include "Platform/Qt/LocalSocket.h"

#include <memory>
#include <string>

namespace lumaro {

/// The ports that verbs with a network are built on. All outlive what they are handed to.
struct NetworkPorts {
    FileSystem& files;
    UUIDSource& ids;
    WallClock& clock;
    Sleeper& sleeper;
    HttpClient& http;
    WebSocketTransport& transport;
    Log& log;
};

/// The one process that has a profile: it holds the lock, the session and the outbox, keeps the last known board on
/// disk, and does what other processes ask for at the profile's socket. Used on one thread, in its Qt event loop.
class ProfileOwner final : private BoardSession::Listener {
public:
    /// The profile must be on a board, which is on `server`. `watcher` hears what the session tells, after the owner.
    static Profile::Result<std::unique_ptr<ProfileOwner>> take(Profile profile, FolderLock lock, std::string server,
                                                               NetworkPorts ports,
                                                               BoardSession::Listener* watcher = nullptr);
    ~ProfileOwner() override;

    BoardSession& session() { return session_; }
    BoardCommands& commands() { return commands_; }
    /// Writes the last known board to disk, if it is another one than there.
    void saveBoard();

private:
    ProfileOwner(Profile profile, FolderLock lock, BoardSession::Setup setup, NetworkPorts ports,
                 BoardSession::Listener* watcher);

    void received(const ServerMessage& message) override;
    void boardChanged(const Board& before, const Board& after) override;
    void stateChanged(const ConnectionState& state) override;
    void serve();
    void answer(const std::string& line, LocalSocketServer::Reply reply);

    // In the order of dependence: the lock is the last to go.
    FolderLock lock_;
    Profile profile_;
    NetworkPorts ports_;
    BoardSession::Listener* watcher_;
    BoardSession session_;
    BoardCommands commands_;
    Board saved_;
    std::unique_ptr<Sleeper::Wait> saving_;
    std::unique_ptr<LocalSocketServer> server_;
};

} // namespace lumaro
