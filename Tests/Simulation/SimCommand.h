// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/BoardSession.h"
#include "Tests/Simulation/SimDevice.h"
#include "Tests/Simulation/SimProgram.h"
#include "Tests/Simulation/SimWires.h"

namespace lumaro::simulation {

/// What `lumaroctl` runs: a `BoardSession`, which sends whatever it is given.
class SimCommand final : public SimProgram, private BoardSession::Listener {
public:
    SimCommand(SimDevice& device, DurableOutbox outbox);

    SyncClient* client() override { return &session_.client(); }
    const SharedBoard& board() const override { return session_.board(); }
    PartnerID slot() const override { return session_.slot(); }
    bool knows(const Members& members) const override;
    bool waitsForAnAnswer() const override { return http_.isAsking(); }

    void act(std::vector<Op> ops) override;
    void handle(samples::Random& random) override;
    void takeBack(samples::Random& /*random*/) override {}
    void sendPresence() override { session_.client().sendPresence({}, {}, Activity::editing); }
    void retryNow() override { session_.client().retryNow(); }
    void reconnect() override;
    void wake() override {}
    void quit() override { device_.lastKnown = session_.board().confirmed(); }

    void check() override { device_.checkShown(session_.board()); }
    void checkAtRest() override {}

private:
    void received(const ServerMessage& message) override { device_.heard(message, session_.board().confirmed()); }
    void boardChanged(const Board& /*before*/, const Board& /*after*/) override {}
    void stateChanged(const ConnectionState& state) override { device_.lineChanged(state); }

    SimDevice& device_;
    SimTransport transport_;
    SimHttp http_;
    Silence silence_;
    BoardSession session_;
};

} // namespace lumaro::simulation
