// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Simulation/SimDevice.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lumaro::simulation {

/// How devices come onto the board and leave it: calls of the pairing service that cross the network both ways, one
/// join or leave at a time. Any answer may be lost; it is then given up, and a later step may try again.
class PairingActs {
public:
    PairingActs(ManualSleeper& time, SimNetwork& network, SimServer& server, Coverage& coverage,
                std::vector<std::unique_ptr<SimDevice>>& devices)
        : time_(time), network_(network), server_(server), coverage_(coverage), devices_(devices) {}

    const std::string& coupleId() const { return coupleId_; }
    bool isBusy() const { return isBusy_; }

    void create(SimDevice& device);
    void joinByCode(SimDevice& device, SimDevice& inviter);
    /// With a link that another device, which is on the board, asks for.
    void joinByLink(SimDevice& device);
    /// Not the last one on the board: nobody could ask it back.
    void leave(SimDevice& device);
    void releasePartner(SimDevice& device);

private:
    template <class T>
    using Heard = std::function<void(const std::expected<T, PairingRefusal>&)>;
    template <class T>
    using Call = std::function<PairingResult<T>(PairingService&, Store&, const Members&, Instant)>;

    template <class T>
    void ask(SimDevice& device, Call<T> call, Heard<T> then);
    template <class T>
    void answer(SimDevice& device, std::optional<std::expected<T, PairingRefusal>> answer, Heard<T> then);
    void later(SimDevice& device, std::function<void()> then);
    void done();

    void useLink(SimDevice& device, const std::string& inviteId, std::optional<PartnerID> slot);
    void joined(SimDevice& device, const std::expected<Joined, PairingRefusal>& answer,
                const std::function<void(PartnerID)>& again);

    ManualSleeper& time_;
    SimNetwork& network_;
    SimServer& server_;
    Coverage& coverage_;
    std::vector<std::unique_ptr<SimDevice>>& devices_;
    std::string coupleId_;
    bool isBusy_ = false;
    std::uint64_t errand_ = 0; ///< counts those that are over: an answer to one of them is ignored
    std::unique_ptr<Sleeper::Wait> wait_;
};

} // namespace lumaro::simulation
