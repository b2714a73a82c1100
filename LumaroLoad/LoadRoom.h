// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Protocol/Messages.h"
#include "LumaroLoad/EditSource.h"
#include "LumaroLoad/Histogram.h"
#include "LumaroLoad/Ledger.h"
#include "LumaroLoad/LoadNetwork.h"
#include "LumaroLoad/LoadOptions.h"
#include "LumaroLoad/Pairing.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

/// What the rooms of one thread have measured, and what they found wrong.
struct Findings {
    bool isMeasuring = false;
    std::uint64_t edits = 0; ///< acknowledged while measuring
    Histogram toAck;         ///< from sending to the ack at the sender
    Histogram toPartner;     ///< from sending to the ops at the partner
    Histogram joins;         ///< from connecting to the welcome
    std::vector<Violation> violations;

    void add(const Findings& other);
};

/// One couple at its board: two sockets, a board of notes, edits by turns; everything the room says is checked.
class LoadRoom {
public:
    using Ready = std::move_only_function<void(std::expected<void, std::string>)>;

    /// The network and the findings outlive the room.
    LoadRoom(LoadNetwork& network, PairingClient& pairing, const LoadOptions& options, std::size_t number,
             Findings& findings);

    /// Pairs, opens both sockets and puts the board up; calls `ready` once.
    void prepare(Ready ready);
    /// Edits until `stop`: as fast as the room answers, or at the rate that was asked for. `offset` puts the first edit
    /// of several rooms apart.
    void start(Seconds offset);
    void stop();
    void sendHeartbeat();
    bool isSettled() const { return ledger_.isSettled(); }
    /// Asks the room for its board and compares it with what was sent; calls `then` once. Edits not answered by now
    /// count as lost.
    void check(std::move_only_function<void()> then);

    const CoupleToken& token() const { return tokens_[0]; }

private:
    // One of the two devices.
    struct Device final : WebSocketListener {
        LoadRoom* room = nullptr;
        PartnerID slot = PartnerID::a;
        bool isWelcome = false;
        std::unique_ptr<WebSocketConnection> connection;

        void opened() override {}
        void received(std::string_view bytes) override { room->hear(*this, bytes); }
        void writable() override {}
        void ended(WebSocketEnd end) override;
    };

    void open();
    void hear(Device& device, std::string_view bytes);
    void welcomed(Device& device);
    void take(std::expected<Ledger::Span, Violation> span, Histogram& spans);
    void report(std::string text);
    void send(const ClientMessage::Ops& batch, PartnerID by);
    void edit();
    void refill();
    void tick();
    void becomeReady(std::expected<void, std::string> result);
    void compare(const HttpClient::Answer& answer);

    LoadNetwork& network_;
    PairingClient& pairing_;
    const LoadOptions& options_;
    std::size_t number_;
    Findings& findings_;
    EditSource source_;
    Ledger ledger_;
    TokenPair tokens_;
    std::optional<Pairing> couple_;
    std::array<Device, 2> devices_;
    Ready ready_;
    bool isRunning_ = false;
    PartnerID next_ = PartnerID::a;
    Ledger::Clock::time_point due_; // of the next edit, at a fixed rate
    std::unique_ptr<Sleeper::Wait> wait_;
    std::unique_ptr<HttpClient::Call> call_;
};

} // namespace lumaro
