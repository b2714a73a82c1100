// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/WallClock.h"
#include "LumaroRoom/Pairing/RandomSource.h"
#include "LumaroRoom/Server/ServerConfig.h"
#include "LumaroRoom/Store/TransactionalStore.h"

#include <cstdint>
#include <expected>
#include <memory>
#include <string>

namespace lumaro {

/// The room and pairing server at work: it listens from `start` to `stop`, on threads of its own.
class Server {
public:
    /// Thread-safe, and alive as long as the server.
    struct Ports {
        WallClock& clock;
        RandomSource& random; ///< used on the store's thread alone
        Log& log;
    };

    /// Fails with a line for people when it cannot listen or has no use for its certificate.
    [[nodiscard]] static std::expected<std::unique_ptr<Server>, std::string>
    start(ServerConfig config, std::unique_ptr<TransactionalStore> store, Ports ports);

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;
    /// Stops.
    ~Server();

    std::uint16_t port() const;
    /// Where it listens: the scheme, the address as it was given, and the port.
    std::string url() const;

    /// Accepts no more, closes the sockets with 1001, lets the store finish, and ends the threads. A second call does
    /// nothing.
    void stop();

private:
    struct Parts;
    explicit Server(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

} // namespace lumaro
