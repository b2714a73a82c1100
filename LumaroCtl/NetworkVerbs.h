// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroControl/BoardAnswer.h"
#include "LumaroControl/BoardRequest.h"
#include "LumaroCore/BoardModel/Identifiers.h"
#include "LumaroCtl/ProfileOwner.h"
#include "LumaroCtl/Streams.h"
#include "Platform/Posix/PosixFileSystem.h"
#include "Platform/Posix/StderrLog.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/SystemRandom.h"
#include "Platform/Qt/QtHttpClient.h"
#include "Platform/Qt/QtLoop.h"
#include "Platform/Qt/QtSleeper.h"
#include "Platform/Qt/QtWebSocketTransport.h"

#include <optional>
#include <string>

namespace lumaro {

/// What every verb with a network is told on the command line; empty where nothing was said.
struct NetworkOptions {
    std::string profile;
    std::string server;
    double wait = 5;
    bool verbose = false;
    /// Asks the application that runs, instead of a profile of this program's own.
    bool app = false;
};

/// The system, as far as one run of a verb needs it.
class Network {
public:
    explicit Network(const NetworkOptions& given);

    /// The profile of this run.
    Profile::Result<Profile> openProfile();
    /// The same, if it is on a board.
    Profile::Result<Profile> openPairedProfile();
    /// The server to talk to: as said, or else as the profile remembers, or else as the environment says.
    Profile::Result<std::string> serverFor(const Profile& profile) const;
    /// Makes this process the only one that has the profile. Waits a while for one that is about to let go of it.
    Profile::Result<FolderLock> takeLock(const Profile& profile);
    /// Lets the loop run for a moment.
    void pause();
    NetworkPorts ports() { return {files, ids, clock, sleeper, http, transport, log}; }

    const NetworkOptions& options;
    // The loop is the first to come and the last to go.
    QtLoop loop;
    PosixFileSystem files;
    SystemRandom ids;
    SystemClock clock;
    StderrLog log;
    QtSleeper sleeper;
    QtHttpClient http;
    QtWebSocketTransport transport;
};

/// Writes the failure as the one line of `verb`.
ExitStatus fail(Streams streams, std::string_view verb, const VerbFailure& failure);

/// Does what the request asks for: in this process when nobody has the profile, and else in the one that has it.
Profile::Result<BoardAnswer> answerTo(Network& network, const BoardRequest& request);
/// The same, and writes the answer.
ExitStatus runBoardVerb(const NetworkOptions& options, Streams streams, const BoardRequest& request);

/// The slot of this profile's person.
Profile::Result<PartnerID> ownSlot(const NetworkOptions& options);

/// Writes the board to a folder: `board.json`, and `notes/ID.txt` for each note.
ExitStatus runExport(const NetworkOptions& options, Streams streams, const std::string& directory);

/// Keeps the board in step and tells what happens, until the process is told to end or the room refuses the profile.
ExitStatus runWatch(const NetworkOptions& options, Streams streams, bool json);

struct JoinOptions {
    std::string name;
    std::string codeOrLink;
    std::optional<PartnerID> slot;
    bool leave = false; ///< the board that the profile is on
};
ExitStatus runStart(const NetworkOptions& options, Streams streams, const std::string& name);
ExitStatus runJoin(const NetworkOptions& options, Streams streams, const JoinOptions& how);
ExitStatus runCode(const NetworkOptions& options, Streams streams);
ExitStatus runLink(const NetworkOptions& options, Streams streams);
ExitStatus runLeave(const NetworkOptions& options, Streams streams);

} // namespace lumaro
