// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Room/RoomHost.h"
#include "LumaroRoom/Store/StoreThread.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace lumaro {

/// What a shard counts of its connections since the start, and how many there are.
struct ConnectionFigures {
    std::size_t open = 0;
    std::uint64_t accepted = 0;
    std::array<std::uint64_t, 6> answers{}; ///< by the first digit of their status
    std::uint64_t upgrades = 0;
    std::uint64_t refusedUpgrades = 0;
    std::uint64_t frames = 0;  ///< received
    std::uint64_t delayed = 0; ///< frames whose socket was over its rate
    std::uint64_t slowReaders = 0;
    std::uint64_t silent = 0; ///< sockets closed for saying nothing
};

/// Of one shard, or of several.
struct ShardFigures {
    RoomHost::Figures rooms;
    ConnectionFigures connections;

    void add(const ShardFigures& other);
};

/// The figures and those of the process, as Prometheus reads them. They name nobody.
std::string metricsText(const ShardFigures& shards, const StoreThread::Figures& store);

} // namespace lumaro
