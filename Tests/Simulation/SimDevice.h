// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/DurableOutbox.h"
#include "Tests/Fakes/CountingUUIDs.h"
#include "Tests/Fakes/MemoryDefaults.h"
#include "Tests/Fakes/MemorySecretStore.h"
#include "Tests/Simulation/SimDisk.h"
#include "Tests/Simulation/SimProgram.h"
#include "Tests/Simulation/SimServer.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro::simulation {

inline const std::string serverURL = "https://board.example";

struct Silence final : Log {
    void write(LogLevel /*level*/, std::string_view /*category*/, std::string_view /*message*/) override {}
};

/// One person's device: a disk, a clock, a keyring and settings that outlive every process, and the program that runs
/// on it.
class SimDevice {
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
    enum class Kind : std::uint8_t { application, command };
    SimDevice(std::size_t index, PartnerID person, Kind kind, Parts parts);
    ~SimDevice();

    std::size_t index() const { return index_; }
    PartnerID person() const { return person_; }
    std::string deviceId() const { return "device-" + std::to_string(index_); }
    std::string name() const { return person_ == PartnerID::a ? "Ada" : "Bo"; }
    Parts& parts() { return parts_; }
    SimDisk& disk() { return disk_; }
    SimClock& clock() { return clock_; }
    UUIDSource& ids() { return ids_; }
    MemoryKeyring& keyring() { return keyring_; }
    MemoryDefaults& defaults() { return defaults_; }
    SyncClient::Configuration configuration() const;

    const std::optional<CoupleToken>& token() const { return token_; }
    /// The token works no more, or there is none: it joins again before it can go on.
    bool needsToken() const { return needsToken_; }
    void pair(CoupleToken token);
    void unpair();

    /// Null while none runs.
    SimProgram* program() { return program_.get(); }
    void start();
    /// The program ends, and the system closes its socket.
    void stop();
    void quit();
    void losePower(std::size_t tornBytes);
    /// The process was killed within a call: called where `DeviceDied` is caught.
    void bury();
    void check();
    void checkAtRest();

    // What its program tells.

    std::expected<DurableOutbox, FileError> openOutbox();
    void stored(const OutboxBatch& batch);
    void heard(const ServerMessage& message, const Board& confirmed);
    void lineChanged(const ConnectionState& state);
    void complain(std::string_view what);
    /// Complains unless the program shows what waits over the room's board.
    void checkShown(const SharedBoard& shared);

    Board lastKnown; ///< of the room, for a program that keeps none itself

private:
    void noteFound(const std::deque<OutboxBatch>& batches);

    std::size_t index_;
    PartnerID person_;
    Kind kind_;
    Parts parts_;
    SimDisk disk_;
    SimClock clock_;
    CountingUUIDs ids_;
    MemoryKeyring keyring_;
    MemoryDefaults defaults_;
    std::optional<CoupleToken> token_;
    bool needsToken_ = true;
    std::unique_ptr<SimProgram> program_;
};

} // namespace lumaro::simulation
