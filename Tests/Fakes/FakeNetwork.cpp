// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/FakeNetwork.h"

#include "LumaroCore/Support/Fatal.h"

#include <utility>

namespace lumaro {

class FakeNetwork::Connection final : public WebSocketConnection {
public:
    Connection(FakeNetwork& network, WebSocketListener& heard) : listener(heard), network_(network) {
        if (network_.current_ != nullptr) fatal("a second socket while one is held");
        network_.current_ = this;
    }
    ~Connection() override { network_.current_ = nullptr; }

    [[nodiscard]] bool send(std::string_view text) override {
        if (!isOpen) return false;
        network_.frames_.emplace_back(text);
        if (network_.isBlocked_) waiting += text.size();
        return true;
    }
    std::size_t bytesToWrite() const override { return waiting; }

    WebSocketListener& listener;
    bool isOpen = false;
    std::size_t waiting = 0;

private:
    FakeNetwork& network_;
};

std::unique_ptr<WebSocketConnection> FakeNetwork::open(const WebSocketRequest& request, WebSocketListener& listener) {
    attempts_.push_back(request);
    return std::make_unique<Connection>(*this, listener);
}

FakeNetwork::Connection& FakeNetwork::held() {
    if (current_ == nullptr) fatal("no socket is held");
    return *current_;
}

void FakeNetwork::accept() {
    held().isOpen = true;
    held().listener.opened();
}

void FakeNetwork::say(std::string_view frame) {
    held().listener.received(frame);
}

void FakeNetwork::end(WebSocketEnd end) {
    held().isOpen = false;
    held().listener.ended(std::move(end));
}

void FakeNetwork::drain() {
    held().waiting = 0;
    held().listener.writable();
}

} // namespace lumaro
