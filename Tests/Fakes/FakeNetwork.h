// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/SyncClient/WebSocketTransport.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumaro {

/// The network and the far side of it, both played by the test: one socket at a time, of which the test decides
/// everything. Outlives its connections.
class FakeNetwork final : public WebSocketTransport {
public:
    [[nodiscard]] std::unique_ptr<WebSocketConnection> open(const WebSocketRequest& request,
                                                            WebSocketListener& listener) override;

    /// Every attempt there ever was.
    const std::vector<WebSocketRequest>& attempts() const { return attempts_; }
    /// Whether the other side holds a socket, open or opening.
    bool isHeld() const { return current_ != nullptr; }
    /// The frames that came since they were last taken.
    std::vector<std::string> takeFrames() { return std::exchange(frames_, {}); }

    /// The events of the socket that is held. It is a fault of the test when there is none.
    void accept();
    void say(std::string_view frame);
    void end(WebSocketEnd end);

    /// From now on nothing that is sent leaves the device: it waits.
    void block() { isBlocked_ = true; }
    /// The system takes what waits, and goes on blocking.
    void drain();

private:
    class Connection;
    Connection& held();

    std::vector<WebSocketRequest> attempts_;
    std::vector<std::string> frames_;
    Connection* current_ = nullptr;
    bool isBlocked_ = false;
};

} // namespace lumaro
