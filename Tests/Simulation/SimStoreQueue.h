// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/StoreQueue.h"
#include "Tests/Fakes/ManualSleeper.h"
#include "Tests/Simulation/SimStore.h"
#include "Tests/Simulation/Trace.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

namespace lumaro::simulation {

/// At which point of a transaction the server is killed.
enum class KillPoint : std::uint8_t {
    none,
    beforeCommit, ///< the works were done and are rolled back
    afterCommit,  ///< durable, and nobody was told
    amidReports,  ///< durable, and some were told
};

/// The queue of the server's store: works that wait together go into one transaction. Ends with the server.
class SimStoreQueue final : public StoreQueue {
public:
    SimStoreQueue(SimStore& store, ManualSleeper& time, Sabotage sabotage, Trace& trace, Coverage& coverage)
        : store_(store), time_(time), sabotage_(sabotage), trace_(trace), coverage_(coverage) {}

    using StoreQueue::submit;
    void submit(Work work, Done done, Undone undone) override;

    /// How long a transaction takes, and the report of it.
    void setPace(Seconds pace) { pace_ = pace; }
    /// So many transactions fail.
    void failNext(int transactions) { failing_ = transactions; }
    void heal();
    /// The server dies at this point of the next transaction: `kill` is called there, and ends this queue.
    void killAt(KillPoint point, std::function<void()> kill);

private:
    struct Job {
        Work work;
        Done done;
        Undone undone;
        StoreResult<void> outcome{};
    };

    void startLater();
    void transact();
    bool runAll();
    void report();
    void reportTooSoon();
    void fail();
    void die();

    SimStore& store_;
    ManualSleeper& time_;
    Sabotage sabotage_;
    Trace& trace_;
    Coverage& coverage_;
    static constexpr Seconds usualPace{0.002};
    Seconds pace_ = usualPace;
    int failing_ = 0;
    KillPoint killPoint_ = KillPoint::none;
    std::function<void()> kill_;
    std::deque<Job> waiting_;
    std::deque<Job> done_;
    std::unique_ptr<Sleeper::Wait> next_;
};

} // namespace lumaro::simulation
