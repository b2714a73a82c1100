// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>

namespace lumaro {

enum class LoadMode : std::uint8_t {
    edit, ///< rooms edit; latencies
    join, ///< sockets are opened one after the other, while the rooms edit when a rate is given
    idle, ///< rooms are open and silent; memory
};

struct LoadOptions {
    LoadMode mode = LoadMode::edit;
    std::string server;
    std::size_t rooms = 1;
    std::optional<double> rate; ///< edits a second in each room; none: a closed loop
    std::size_t window = 1;     ///< edits under way in each room of a closed loop
    double seconds = 10;
    double warmup = 2;
    double settle = 5; ///< between opening the rooms and looking at the memory
    std::size_t items = 30;
    std::optional<int> serverProcess;
    std::size_t threads = 1;
    std::string syncDirectory;
    bool isJson = false;
};

/// Why the program ends before it has begun: the text to show, and the exit status.
struct EarlyEnd {
    std::string text;
    int status = 0;
};

[[nodiscard]] std::expected<LoadOptions, EarlyEnd> parseOptions(std::span<char* const> arguments);

} // namespace lumaro
