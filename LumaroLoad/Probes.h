// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroLoad/Histogram.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>

namespace lumaro {

/// What a process has used so far.
struct ProcessUsage {
    std::chrono::microseconds cpu{0}; ///< user and system, in the steps of the kernel's clock tick
    std::int64_t residentKiB = 0;
};

[[nodiscard]] std::expected<ProcessUsage, std::string> usageOf(int process);

/// Appends 4 KiB to a new file in `directory` and syncs it, `count` times; how long each took. The file is removed.
[[nodiscard]] std::expected<Histogram, std::string> timeSyncs(const std::string& directory, std::size_t count);

} // namespace lumaro
