// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroLoad/LoadRoom.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace lumaro {

/// Opens one more socket of a device that is on a board, and measures how long its welcome takes from the first packet
/// of the connection on.
class JoinProbe final : public WebSocketListener {
public:
    /// `then` is called once and may drop this. The network and the findings outlive this.
    JoinProbe(LoadNetwork& network, const std::string& server, const CoupleToken& token, Findings& findings,
              std::move_only_function<void()> then);

    void opened() override {}
    void received(std::string_view bytes) override;
    void writable() override {}
    void ended(WebSocketEnd end) override;

private:
    void finish();

    Findings& findings_;
    std::move_only_function<void()> then_;
    Ledger::Clock::time_point began_ = Ledger::Clock::now();
    std::unique_ptr<WebSocketConnection> connection_;
};

} // namespace lumaro
