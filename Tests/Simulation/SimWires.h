// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Simulation/SimServer.h"

#include <cstddef>
#include <memory>

namespace lumaro::simulation {

/// The sockets of a device, over the simulated network.
class SimTransport final : public WebSocketTransport {
public:
    SimTransport(SimNetwork& network, std::size_t device) : network_(network), device_(device) {}
    [[nodiscard]] std::unique_ptr<WebSocketConnection> open(const WebSocketRequest& request,
                                                            WebSocketListener& listener) override {
        return network_.open(device_, request, listener);
    }

private:
    SimNetwork& network_;
    std::size_t device_;
};

/// The HTTP requests of a device: the server answers those for the board; there are no pictures.
class SimHttp final : public HttpClient {
public:
    SimHttp(ManualSleeper& time, SimNetwork& network, SimServer& server, std::size_t device)
        : time_(time), network_(network), server_(server), device_(device) {}

    [[nodiscard]] std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override;
    /// Whether the room's server has the weather, and the forecast service; each may be out of order.
    void turnWeather(samples::Random& random);
    /// Whether a request for the board is on its way.
    bool isAsking() const { return !latest_.expired(); }

private:
    struct State;
    struct Request;

    Answer weatherFrom(const std::string& url) const;
    void bring(const std::weak_ptr<State>& place, Answer answer);
    static void finish(const std::weak_ptr<State>& place, Answer answer);

    ManualSleeper& time_;
    SimNetwork& network_;
    SimServer& server_;
    std::size_t device_;
    bool roomHasWeather_ = true;
    bool serviceHasWeather_ = true;
    std::weak_ptr<State> latest_;
};

} // namespace lumaro::simulation
