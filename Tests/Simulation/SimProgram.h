// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "LumaroCore/SyncClient/SyncClient.h"
#include "LumaroRoom/Store/Records.h"
#include "Samples/Samples.h"

#include <optional>
#include <string>
#include <vector>

namespace lumaro::simulation {

/// The program of a simulated device. Dropping it kills its process.
class SimProgram {
public:
    SimProgram() = default;
    SimProgram(const SimProgram&) = delete;
    SimProgram& operator=(const SimProgram&) = delete;
    virtual ~SimProgram() = default;

    /// Null while it has no outbox to work with.
    virtual SyncClient* client() = 0;
    virtual const SharedBoard& board() const = 0;
    virtual PartnerID slot() const = 0;
    /// Whether it has heard who is there and what they are called.
    virtual bool knows(const Members& members) const = 0;
    /// It has sent a plain request that it may yet give up.
    virtual bool waitsForAnAnswer() const = 0;

    virtual void act(std::vector<Op> ops) = 0;
    /// What people do at a window.
    virtual void handle(samples::Random& random) = 0;
    virtual void takeBack(samples::Random& random) = 0;
    virtual void sendPresence() = 0;
    /// Plays a song, pauses or ends it, or says whether music is shared; where it knows players.
    virtual void changeMusic(samples::Random& /*random*/) {}
    /// What plays here, shared or not; none in silence, and without players.
    virtual std::optional<std::string> song() const { return std::nullopt; }
    virtual bool sharesMusic() const { return false; }
    /// The song of the partner that is shown here.
    virtual std::optional<std::string> partnersSong() const { return std::nullopt; }
    /// Moves, says where they are, names it, or says whether it is shared; where it knows places.
    virtual void changePlace(samples::Random& /*random*/) {}
    /// What this device shares of where it is.
    virtual std::optional<Here> place() const { return std::nullopt; }
    /// Where the partner is, as it is shown here.
    virtual std::optional<Here> partnersPlace() const { return std::nullopt; }
    /// What is wrong at rest with what this device shares of its place; empty when nothing is.
    virtual std::string faultOfPlace() const { return {}; }
    /// Whether it has music and places at all.
    virtual bool hasLiveCards() const { return false; }
    virtual void retryNow() = 0;
    virtual void reconnect() = 0;
    /// The machine slept, and its clock is set.
    virtual void wake() = 0;
    /// Ends as it is meant to end; it is only dropped after this.
    virtual void quit() = 0;

    /// What must be true of it at any time.
    virtual void check() = 0;
    /// What must be true besides when nothing has happened for a while.
    virtual void checkAtRest() = 0;
};

} // namespace lumaro::simulation
