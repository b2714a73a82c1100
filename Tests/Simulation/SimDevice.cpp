// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimDevice.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {
namespace {

const std::string serverURL = "https://board.example";

class Transport final : public WebSocketTransport {
public:
    Transport(SimNetwork& network, std::size_t device) : network_(network), device_(device) {}
    [[nodiscard]] std::unique_ptr<WebSocketConnection> open(const WebSocketRequest& request,
                                                            WebSocketListener& listener) override {
        return network_.open(device_, request, listener);
    }

private:
    SimNetwork& network_;
    std::size_t device_;
};

class Http final : public HttpClient {
public:
    Http(ManualSleeper& time, SimNetwork& network, SimServer& server, std::size_t device)
        : time_(time), network_(network), server_(server), device_(device) {}

    [[nodiscard]] std::unique_ptr<Call> send(HttpRequest request, std::move_only_function<void(Answer)> then) override {
        auto call = std::make_unique<Request>();
        call->state = std::make_shared<State>();
        latest_ = call->state;
        const auto place = std::weak_ptr{call->state};
        call->state->then = std::move(then);
        call->state->patience = time_.wait(request.timeout, [place] { finish(place, noAnswer()); });
        if (network_.weather(device_).reach == Weather::Reach::open) {
            call->state->way = time_.wait(network_.delay(device_), [this, place, request = std::move(request)] {
                server_.snapshot(request, [this, place](Answer answer) { bring(place, std::move(answer)); });
            });
        } else {
            bring(place, noAnswer());
        }
        return call;
    }
    bool isAsking() const { return !latest_.expired(); }

private:
    struct State {
        std::move_only_function<void(Answer)> then;
        std::unique_ptr<Sleeper::Wait> way;
        std::unique_ptr<Sleeper::Wait> patience;
    };
    struct Request final : Call {
        std::shared_ptr<State> state;
    };

    static Answer noAnswer() { return std::unexpected(HttpFailure{"no answer"}); }

    void bring(const std::weak_ptr<State>& place, Answer answer) {
        const auto state = place.lock();
        if (!state) return;
        state->way = time_.wait(network_.delay(device_),
                                [place, answer = std::move(answer)]() mutable { finish(place, std::move(answer)); });
    }

    static void finish(const std::weak_ptr<State>& place, Answer answer) {
        const auto state = place.lock();
        if (!state || !state->then) return;
        auto then = std::move(state->then);
        state->way.reset();
        state->patience.reset();
        then(std::move(answer));
    }

    ManualSleeper& time_;
    SimNetwork& network_;
    SimServer& server_;
    std::size_t device_;
    std::weak_ptr<State> latest_;
};

struct Silence final : Log {
    void write(LogLevel /*level*/, std::string_view /*category*/, std::string_view /*message*/) override {}
};

} // namespace

struct SimDevice::Process {
    Process(SimDevice& device, DurableOutbox outbox)
        : transport(device.parts_.network, device.index_),
          http(device.parts_.time, device.parts_.network, device.parts_.server, device.index_),
          session({.serverURL = serverURL,
                   .token = *device.token_,
                   .deviceId = device.deviceId(),
                   .outbox = std::move(outbox),
                   .lastKnown = device.lastKnown_,
                   .configuration = configurationFor(device.parts_.sabotage)},
                  {.transport = transport,
                   .http = http,
                   .sleeper = device.parts_.time,
                   .clock = device.clock_,
                   .log = silence},
                  device.ids_, device) {}

    static SyncClient::Configuration configurationFor(Sabotage sabotage) {
        SyncClient::Configuration configuration;
        configuration.retransmitOnConnect = sabotage != Sabotage::nothingIsResent;
        return configuration;
    }

    Transport transport;
    Http http;
    Silence silence;
    BoardSession session;
};

SimDevice::SimDevice(std::size_t index, PartnerID person, Parts parts)
    : index_(index), person_(person), parts_(parts), disk_(index, parts.sabotage, parts.coverage), clock_(parts.time),
      ids_((index + 1) << 32) {
}

SimDevice::~SimDevice() = default;

BoardSession* SimDevice::session() {
    return process_ ? &process_->session : nullptr;
}

bool SimDevice::waitsForAnAnswer() const {
    return process_ && process_->http.isAsking();
}

void SimDevice::pair(CoupleToken token) {
    stop();
    token_ = std::move(token);
    needsToken_ = false;
}

void SimDevice::unpair() {
    stop();
    needsToken_ = true;
}

void SimDevice::start() {
    if (process_ || needsToken_) return;
    auto outbox = DurableOutbox::open(disk_, ids_, "/home/outbox/" + token_->coupleId);
    if (!outbox) {
        parts_.coverage.note(Met::startsRefusedByDisk);
        return;
    }
    parts_.trace.add("start", index_, std::to_string(outbox->count()));
    parts_.coverage.note(Met::outboxRecoveries, outbox->count());
    parts_.witness.checkOutbox(index_, outbox->pending());
    noteFound(outbox->pending());
    process_ = std::make_unique<Process>(*this, std::move(*outbox));
    process_->session.client().connect();
}

void SimDevice::stop() {
    if (!process_) return;
    parts_.trace.add("stop", index_);
    process_.reset();
}

void SimDevice::losePower(std::size_t tornBytes) {
    parts_.coverage.note(Met::powerLosses);
    parts_.network.abandon(index_);
    stop();
    disk_.losePower(tornBytes);
}

void SimDevice::bury() {
    // Of an act in many batches the first ones may be stored, and even sent.
    if (process_) noteFound(process_->session.client().pending());
    stop();
}

void SimDevice::noteFound(const std::deque<OutboxBatch>& batches) {
    for (const auto& batch : batches) parts_.witness.accepted(index_, batch, Witness::Acceptance::asFound);
}

void SimDevice::act(std::vector<Op> ops) {
    if (!process_ || ops.empty()) return;
    parts_.coverage.note(Met::acts);
    if (ops.size() > BoardSpec::maxOpsPerBatch) parts_.coverage.note(Met::actsInManyBatches);
    auto& session = process_->session;
    const auto first = session.client().outbox().nextSequence();
    const auto outcome = session.act(std::move(ops));
    for (const auto& batch : session.client().pending()) {
        if (batch.sequence >= first) parts_.witness.accepted(index_, batch, Witness::Acceptance::byWord);
    }
    if (!outcome) {
        parts_.coverage.note(Met::actsRefusedByDisk);
    } else if (outcome->way == SendOutcome::Way::queued) {
        parts_.coverage.note(Met::actsQueued);
    }
    parts_.trace.add("act", index_, outcome ? "stored" : "refused");
}

void SimDevice::saveBoard() {
    if (process_) lastKnown_ = process_->session.board().confirmed();
}

void SimDevice::check() {
    if (!process_) return;
    const auto& waiting = process_->session.client().pending();
    parts_.witness.checkOutbox(index_, waiting);
    const auto& shared = process_->session.board();
    const bool isSame =
        std::ranges::equal(waiting, shared.pending(), {}, &OutboxBatch::batchId, &PendingBatch::batchId);
    if (!isSame) {
        parts_.witness.complain("device " + std::to_string(index_) +
                                " shows other batches over the room's board than wait");
        return;
    }
    auto shown = shared.confirmed();
    for (const auto& batch : waiting) shown = BoardLogic::apply(batch.ops, std::move(shown), clock_.now()).board;
    if (lookOf(shown) != lookOf(shared.shown())) {
        parts_.witness.complain("device " + std::to_string(index_) + " does not show what waits over the room's board");
    }
}

void SimDevice::received(const ServerMessage& message) {
    parts_.witness.deviceHeard(index_, message, process_->session.board().confirmed());
    if (std::holds_alternative<ServerMessage::Thread>(message.value)) parts_.coverage.note(Met::threadsTied);
}

void SimDevice::boardChanged(const Board& /*before*/, const Board& /*after*/) {
}

void SimDevice::stateChanged(const ConnectionState& state) {
    if (std::holds_alternative<ConnectionState::Connected>(state.value)) parts_.witness.lineOpened(index_);
    if (std::holds_alternative<ConnectionState::Rejected>(state.value)) {
        parts_.coverage.note(Met::tokensRejected);
        needsToken_ = true;
    }
}

} // namespace lumaro::simulation
