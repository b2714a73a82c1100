// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Support/HttpClient.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/SyncClient/WebSocketTransport.h"

#include <expected>
#include <memory>
#include <string>

namespace lumaro {

/// One thread's way to one server: an event loop and the ports that run on it. The ports are used on the thread that
/// runs the loop, or while it does not run.
///
/// When the server is on the loopback, sockets and calls are spread over many source addresses, as a room takes only so
/// many sockets from one.
class LoadNetwork {
public:
    /// `serverURL` is `http://host:port`; `number` keeps the source addresses of several networks apart.
    static std::expected<std::unique_ptr<LoadNetwork>, std::string> create(const std::string& serverURL,
                                                                           unsigned number);
    virtual ~LoadNetwork() = default;
    LoadNetwork(const LoadNetwork&) = delete;
    LoadNetwork& operator=(const LoadNetwork&) = delete;

    virtual HttpClient& http() = 0;
    virtual WebSocketTransport& sockets() = 0;
    virtual Sleeper& sleeper() = 0;

    /// Runs the loop until `stop` is called from within it.
    virtual void run() = 0;
    virtual void stop() = 0;

protected:
    LoadNetwork() = default;
};

} // namespace lumaro
