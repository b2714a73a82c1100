// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroLoad/JoinProbe.h"
#include "LumaroLoad/LoadNetwork.h"
#include "LumaroLoad/LoadOptions.h"
#include "LumaroLoad/LoadRoom.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// The rooms of one thread. Each verb runs the thread's event loop until it is done; one verb at a time, on one thread.
class LoadShard {
public:
    /// Rooms `number`, `number + step`, ... below `options.rooms`. The options outlive the shard.
    static std::expected<std::unique_ptr<LoadShard>, std::string> create(const LoadOptions& options, std::size_t number,
                                                                         std::size_t step);

    /// Makes the rooms, a few at a time.
    std::expected<void, std::string> prepare();
    /// Lets everything rest, heartbeats apart.
    void rest(Seconds span);
    /// The load, unmeasured for the time of warming up and measured for the time after.
    void load();
    /// Waits for what is under way, and has every room checked.
    void settle();

    const Findings& findings() const { return findings_; }

private:
    LoadShard(const LoadOptions& options, std::unique_ptr<LoadNetwork> network);

    void runFor(Seconds span);
    void beatHearts();
    void prepareNext();
    void prepared(std::expected<void, std::string> result);
    void joinNext();
    void checkNext();

    struct Silence final : Log {
        void write(LogLevel /*level*/, std::string_view /*category*/, std::string_view /*message*/) override {}
    };

    const LoadOptions& options_;
    std::unique_ptr<LoadNetwork> network_;
    Silence log_;
    PairingClient pairing_;
    Findings findings_;
    std::vector<std::unique_ptr<LoadRoom>> rooms_;
    std::size_t started_ = 0; // rooms whose turn has come in the verb under way
    std::size_t ended_ = 0;   // and those that are done
    std::string failure_;     // of the first room that could not be made
    std::unique_ptr<JoinProbe> join_;
    std::unique_ptr<Sleeper::Wait> heartbeat_;
    std::unique_ptr<Sleeper::Wait> nextJoin_;
};

} // namespace lumaro
