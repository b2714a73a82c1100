// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/BoardSession.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Simulation/SimDisk.h"
#include "Tests/Simulation/SimServer.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro::simulation {

/// One person's device: a disk, a clock and a token that outlive its process, and the process, with the real session
/// in it.
class SimDevice final : private BoardSession::Listener {
public:
    struct Parts {
        ManualSleeper& time;
        SimNetwork& network;
        SimServer& server;
        Witness& witness;
        Trace& trace;
        Coverage& coverage;
        Sabotage sabotage;
    };
    SimDevice(std::size_t index, PartnerID person, Parts parts);
    ~SimDevice() override;

    std::size_t index() const { return index_; }
    PartnerID person() const { return person_; }
    std::string deviceId() const { return "device-" + std::to_string(index_); }
    std::string name() const { return person_ == PartnerID::a ? "Ada" : "Bo"; }
    SimDisk& disk() { return disk_; }
    SimClock& clock() { return clock_; }
    UUIDSource& ids() { return ids_; }

    const std::optional<CoupleToken>& token() const { return token_; }
    /// The token works no more, or there is none: it joins again before it can go on.
    bool needsToken() const { return needsToken_; }
    void pair(CoupleToken token);
    void unpair();

    /// Null while the process does not run.
    BoardSession* session();
    /// It has sent a plain request that it may yet give up.
    bool waitsForAnAnswer() const;
    void start();
    /// The process ends, and the system closes its socket.
    void stop();
    void losePower(std::size_t tornBytes);
    /// Where `DeviceDied` was caught.
    void bury();

    void act(std::vector<Op> ops);
    /// Keeps the room's board as it is known, for the next start.
    void saveBoard();
    /// What must be true of a device at any time.
    void check();

private:
    struct Process;

    void received(const ServerMessage& message) override;
    void boardChanged(const Board& before, const Board& after) override;
    void stateChanged(const ConnectionState& state) override;

    void noteFound(const std::deque<OutboxBatch>& batches);

    std::size_t index_;
    PartnerID person_;
    Parts parts_;
    SimDisk disk_;
    SimClock clock_;
    CountingUUIDs ids_;
    std::optional<CoupleToken> token_;
    bool needsToken_ = true;
    Board lastKnown_;
    std::unique_ptr<Process> process_;
};

} // namespace lumaro::simulation
