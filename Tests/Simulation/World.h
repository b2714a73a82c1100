// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Simulation/PairingActs.h"
#include "Tests/Simulation/Script.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro::simulation {

/// Two or three devices, their server and all that lies between, in one thread and one time.
class World {
public:
    World(const Script& script, const MutantCase& mutant, bool isPrinted);

    /// Runs the script; what it found wrong, if anything.
    std::optional<std::string> run();

    std::uint64_t traceHash() const { return trace_.hash(); }
    const Coverage& coverage() const { return coverage_; }

private:
    struct Randomness final : RandomSource {
        explicit Randomness(std::uint64_t seed) : random(seed) {}
        void fill(std::span<std::uint8_t> bytes) override {
            for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
        }
        samples::Random random;
    };

    void meet();
    void perform(const Step& step);
    void performOnDevice(SimDevice& device, const Step& step);
    void performOnServer(const Step& step);
    void use(SimProgram& program, SimDevice& device, const Step& step);
    void cut(SimDevice& device, const Step& step);
    void stayAway(SimDevice& device);
    void commitElsewhere(const Step& step);

    void calm();
    void heal();
    void touchAfterForeignCommits();
    bool areInStep();
    bool areRostersRight();
    void checkSongs();
    void checkPlaces();
    void checkAtRest();
    void letTimeTakeDown();
    std::optional<RoomRecord> room();

    void advance(Seconds span);
    void housekeep();
    void check();
    bool isFailed() const { return witness_.complaint().has_value(); }

    const Script& script_;
    ManualSleeper time_;
    Coverage coverage_;
    Trace trace_;
    Witness witness_;
    Randomness randomness_;
    SimStore store_;
    SimNetwork network_;
    SimServer server_;
    std::vector<std::unique_ptr<SimDevice>> devices_;
    PairingActs pairing_;
    bool isForeign_ = false; ///< another node has committed since the room last did
};

} // namespace lumaro::simulation
