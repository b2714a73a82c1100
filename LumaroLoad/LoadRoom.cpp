// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/LoadRoom.h"

#include "LumaroCore/BoardModel/BoardJson.h"
#include "LumaroCore/Protocol/CoupleEndpoints.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

Instant now() {
    return std::chrono::floor<Microseconds>(std::chrono::system_clock::now());
}

std::string textOf(const WebSocketEnd& end) {
    return std::visit(Overloaded{[](const WebSocketEnd::Refused& refused) {
                                     return "refused with HTTP status " + std::to_string(refused.status);
                                 },
                                 [](const WebSocketEnd::Closed& closed) {
                                     return "closed by the server with code " + std::to_string(closed.code);
                                 },
                                 [](const WebSocketEnd::Failed& failed) { return failed.message; }},
                      end.value);
}

} // namespace

void Findings::add(const Findings& other) {
    edits += other.edits;
    toAck.add(other.toAck);
    toPartner.add(other.toPartner);
    joins.add(other.joins);
    violations.insert(violations.end(), other.violations.begin(), other.violations.end());
}

LoadRoom::LoadRoom(LoadNetwork& network, PairingClient& pairing, const LoadOptions& options, std::size_t number,
                   Findings& findings)
    : network_(network), pairing_(pairing), options_(options), number_(number), findings_(findings),
      source_(std::random_device{}() ^ (number * 0x9E3779B97F4A7C15U), options.items) {
    for (const PartnerID slot : {PartnerID::a, PartnerID::b}) {
        devices_.at(static_cast<std::size_t>(slot)).room = this;
        devices_.at(static_cast<std::size_t>(slot)).slot = slot;
    }
}

void LoadRoom::prepare(Ready ready) {
    ready_ = std::move(ready);
    couple_.emplace(pairing_, number_, [this](std::expected<TokenPair, std::string> tokens) {
        if (!tokens) return becomeReady(std::unexpected(std::move(tokens.error())));
        tokens_ = std::move(*tokens);
        open();
    });
}

void LoadRoom::becomeReady(std::expected<void, std::string> result) {
    if (auto ready = std::exchange(ready_, nullptr)) ready(std::move(result));
}

void LoadRoom::open() {
    for (Device& device : devices_) {
        const CoupleToken& token = tokens_.at(static_cast<std::size_t>(device.slot));
        const CoupleEndpoints endpoints{options_.server, token.coupleId};
        device.connection = network_.sockets().open(
            {.url = endpoints.webSocket(), .headers = {{"authorization", token.authorizationHeaderValue()}}}, device);
    }
}

void LoadRoom::Device::ended(WebSocketEnd end) {
    const std::string text = std::string{"the socket of slot "}.append(nameOf(slot)) + " ended: " + textOf(end);
    if (room->ready_) return room->becomeReady(std::unexpected(text));
    room->report(text);
}

void LoadRoom::hear(Device& device, std::string_view bytes) {
    const auto at = Ledger::Clock::now();
    if (bytes == heartbeatAck) return;
    const auto message = Wire::decode<ServerMessage>(bytes);
    if (!message) return report("a message does not decode: " + message.error().message);
    std::visit(Overloaded{
                   [&](const ServerMessage::Welcome&) { welcomed(device); },
                   [&](const ServerMessage::Ack& ack) {
                       if (findings_.isMeasuring) ++findings_.edits;
                       take(ledger_.acked(device.slot, ack.batchId, at), findings_.toAck);
                   },
                   [&](const ServerMessage::Ops& ops) {
                       take(ledger_.relayed(ops.author, ops.batchId, at), findings_.toPartner);
                   },
                   [&](const ServerMessage::Error& error) { report("the room says: " + error.message); },
                   [](const ServerMessage::Roster&) {},
                   [](const ServerMessage::Presence&) {},
                   [](const ServerMessage::Calendar&) {},
                   [](const ServerMessage::Thread&) {},
               },
               message->value);
}

void LoadRoom::welcomed(Device& device) {
    if (device.isWelcome) return report("a second welcome: the room did not take an edit as it was");
    device.isWelcome = true;
    if (std::ranges::all_of(devices_, &Device::isWelcome)) send(source_.board(now()), PartnerID::a);
}

void LoadRoom::take(std::expected<Ledger::Span, Violation> span, Histogram& spans) {
    if (!span) return report(std::move(span.error().text));
    if (findings_.isMeasuring) spans.record(*span);
    if (ready_ && ledger_.isSettled()) becomeReady({});
    refill();
}

void LoadRoom::report(std::string text) {
    findings_.violations.push_back({"room " + std::to_string(number_) + ": " + std::move(text)});
}

void LoadRoom::send(const ClientMessage::Ops& batch, PartnerID by) {
    const auto text = Wire::encode(ClientMessage{batch});
    ledger_.sent(by, batch.batchId, Ledger::Clock::now());
    if (!text || !devices_.at(static_cast<std::size_t>(by)).connection->send(*text)) report("an edit cannot be sent");
}

void LoadRoom::edit() {
    send(source_.edit(next_, now()), next_);
    next_ = other(next_);
}

void LoadRoom::start(Seconds offset) {
    isRunning_ = true;
    if (!options_.rate) return refill();
    due_ = Ledger::Clock::now() + std::chrono::duration_cast<Ledger::Span>(offset);
    wait_ = network_.sleeper().wait(offset, [this] { tick(); });
}

void LoadRoom::stop() {
    isRunning_ = false;
    wait_.reset();
}

// The closed loop: so many edits are under way at any time.
void LoadRoom::refill() {
    while (isRunning_ && !options_.rate && ledger_.unacked() < options_.window) edit();
}

// The fixed rate: edits are due at fixed instants, however long the room takes.
void LoadRoom::tick() {
    edit();
    due_ += std::chrono::duration_cast<Ledger::Span>(Seconds{1 / *options_.rate});
    wait_ = network_.sleeper().wait(std::max(Seconds{0}, Seconds{due_ - Ledger::Clock::now()}), [this] { tick(); });
}

void LoadRoom::sendHeartbeat() {
    for (Device& device : devices_) {
        if (device.isWelcome && !device.connection->send(heartbeatFrame)) report("a heartbeat cannot be sent");
    }
}

void LoadRoom::check(std::move_only_function<void()> then) {
    for (Violation& violation : ledger_.missing()) report(std::move(violation.text));
    const CoupleEndpoints endpoints{options_.server, tokens_[0].coupleId};
    HttpRequest request{.method = "GET",
                        .url = endpoints.snapshot(),
                        .headers = {{"authorization", tokens_[0].authorizationHeaderValue()}},
                        .body = {}};
    call_ = network_.http().send(std::move(request), [this, done = std::move(then)](HttpClient::Answer answer) mutable {
        compare(answer);
        done();
    });
}

void LoadRoom::compare(const HttpClient::Answer& answer) {
    if (!answer || !answer->isSuccess()) return report("the room does not show its board");
    const auto board = Wire::decode<Board>(answer->body);
    if (!board) return report("the board does not decode: " + board.error().message);
    if (board->items != source_.items()) report("the board at the end is not the one that was made");
}

} // namespace lumaro
