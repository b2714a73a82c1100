// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/WebSocketTransport.h"

#include <cstddef>
#include <memory>

class QObject;

namespace lumaro {

/// Sockets through Qt WebSockets, with the system's proxy and certificates, in the event loop of the thread that made
/// it. Qt hides the status of a refused upgrade: such an end is `Refused` with status 0. Connections do not outlive it.
class QtWebSocketTransport final : public WebSocketTransport {
public:
    /// A longer message ends the socket; a full board has 2 MiB.
    static constexpr std::size_t maxMessageBytes = std::size_t{64} * 1024 * 1024;

    QtWebSocketTransport();
    ~QtWebSocketTransport() override;

    [[nodiscard]] std::unique_ptr<WebSocketConnection> open(const WebSocketRequest& request,
                                                            WebSocketListener& listener) override;

private:
    // The sockets of dropped connections, which say goodbye on their own.
    std::unique_ptr<QObject> sockets_;
};

} // namespace lumaro
