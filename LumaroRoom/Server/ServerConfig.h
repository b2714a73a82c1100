// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/WindowKey.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroRoom/Server/IpAddress.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// What the server allows; the numbers it promises.
struct ServerLimits {
    double messagesPerSecond = 50; ///< of one socket, sustained
    double messageBurst = 200;
    std::size_t maxFrameBytes = std::size_t{4} * 1024 * 1024;
    std::size_t maxWaitingBytes = std::size_t{8} * 1024 * 1024; ///< for a socket that reads slowly
    std::size_t maxBodyBytes = std::size_t{64} * 1024;
    std::size_t maxMediaBytes = 2'097'152;
    std::size_t maxCoupleMediaBytes = std::size_t{256} * 1024 * 1024;
    std::size_t maxCoverBytes = 131'072;
    std::size_t maxCoupleCoverBytes = std::size_t{16} * 1024 * 1024;
    std::uint32_t maxHeaderBytes = 16 * 1024;
    std::size_t socketsPerOrigin = 100;
    std::chrono::milliseconds socketSilence{90'000}; ///< a socket that says nothing for so long is closed
    std::chrono::milliseconds requestTime{60'000};   ///< from the first byte of a request to its last
    std::chrono::milliseconds keepAlive{60'000};     ///< between requests
    std::chrono::milliseconds closingTime{5'000};    ///< for the peer's goodbye
    std::chrono::milliseconds tick{1'000};           ///< how often these times are looked at
    std::chrono::minutes weatherAge{10};
};

struct ServerConfig {
    std::string address = "127.0.0.1";
    std::uint16_t port = 7700; ///< 0: a free one
    std::string databasePath;
    std::string publicURL; ///< empty: that of the address; without a slash at its end
    struct Tls {
        std::string certificatePath; ///< PEM, with its chain
        std::string keyPath;
    };
    std::optional<Tls> tls;
    std::vector<IpRange> trustedProxies;
    std::vector<IpRange> onlyFrom; ///< who may connect; everybody when it is empty
    std::string weatherUpstream = "https://api.open-meteo.com";
    std::optional<WindowKey> windowKey; ///< none: this server has no city page
    std::size_t threads = 1;
    LogLevel logLevel = LogLevel::info;
    ServerLimits limits;
};

} // namespace lumaro
