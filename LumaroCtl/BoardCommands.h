// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/BoardAnswer.h"
#include "LumaroControl/EditRequest.h"
#include "LumaroCore/SyncClient/BoardSession.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// Does on a session what verbs ask for, in whichever process has the profile.
///
/// A request waits until the board is as fresh as it gets: until the room's board has come, or the room turns out to be
/// unreachable, or its time is over. One that edits then waits within the same time until the room has taken the edit.
/// Whoever owns the session passes on what it hears.
class BoardCommands {
public:
    using Then = std::move_only_function<void(BoardAnswer)>;

    /// All outlive the commands.
    BoardCommands(BoardSession& session, WallClock& clock, Sleeper& sleeper);

    /// Calls `then` once, perhaps from within this call. It must not drop the commands.
    void execute(BoardRequest request, Then then);
    /// Whether any request waits.
    bool isBusy() const { return !tasks_.empty(); }

    void received(const ServerMessage& message);
    void stateChanged(const ConnectionState& state);

private:
    struct Task {
        BoardRequest request;
        Then then;
        std::unique_ptr<Sleeper::Wait> timer;
        bool isLate = false;
        bool wasRun = false;
        BoardAnswer answer;
        std::vector<UUID> batches; ///< of its edit
        std::optional<std::string> complaint;
    };

    void advance();
    bool isFresh() const;
    bool isSettled(const Task& task) const;
    void run(Task& task);
    void conclude(Task& task) const;

    BoardAnswer edit(const AskedVerb& verb, std::vector<UUID>& batches);
    BoardAnswer show(const BoardRequest::Show& show) const;
    BoardAnswer pending() const;
    BoardAnswer status() const;

    const Board& board() const { return session_.board().shown(); }
    Hand hand() const;

    BoardSession& session_;
    WallClock& clock_;
    Sleeper& sleeper_;
    bool wasWelcomed_ = false;
    std::list<Task> tasks_;
};

} // namespace lumaro
