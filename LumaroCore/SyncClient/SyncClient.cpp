// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/SyncClient/SyncClient.h"

#include "LumaroCore/BoardModel/BoardSpec.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

bool isRefusal(int status) {
    return status == 401 || status == 403;
}

std::string answered(int status) {
    return LumaroCoreError{LumaroCoreError::BadServerResponse{status}}.errorDescription();
}

// What the listener hears where the token was refused without an "error" from the room.
ServerMessage::Error refusal() {
    return {.code = {std::string{ServerErrorCode::unauthorized}}, .message = "this Mac's token was replaced"};
}

SendError asSendError(OutboxError error) {
    return std::visit(Overloaded{[](FileError& disk) -> SendError { return std::move(disk); },
                                 [](EncodeError& json) -> SendError { return std::move(json); }},
                      error);
}

std::expected<Board, SyncClient::SnapshotError> boardIn(const HttpClient::Answer& answer) {
    if (!answer) return std::unexpected(answer.error());
    if (!answer->isSuccess()) {
        return std::unexpected(LumaroCoreError{LumaroCoreError::BadServerResponse{answer->status}});
    }
    auto board = Wire::decode<Board>(answer->body);
    if (!board) return std::unexpected(std::move(board.error()));
    return std::move(*board);
}

} // namespace

SyncClient::SyncClient(std::string serverURL, CoupleToken token, std::optional<std::string> deviceId,
                       DurableOutbox outbox, Configuration configuration, Ports ports, Listener& listener)
    : token_(std::move(token)), endpoints_{std::move(serverURL), token_.coupleId}, deviceId_(std::move(deviceId)),
      outbox_(std::move(outbox)), configuration_(configuration), backoff_(configuration.backoff), ports_(ports),
      listener_(listener) {
    if (const auto lost = outbox_.lostFiles(); lost > 0) {
        log(LogLevel::error, "unreadable outbox files, now gone: " + std::to_string(lost));
    }
}

// The connection loop. Each step tells the listener last: whatever that calls meets a client at rest in the new state.

void SyncClient::connect() {
    const bool isAtRest = std::holds_alternative<ConnectionState::Idle>(state_.value) ||
                          std::holds_alternative<ConnectionState::Stopped>(state_.value);
    if (isAtRest && !isShutDown_) attempt();
}

void SyncClient::disconnect() {
    if (std::holds_alternative<ConnectionState::Rejected>(state_.value)) return;
    dropLine();
    enter({ConnectionState::Stopped{}});
}

void SyncClient::shutdown() {
    isShutDown_ = true;
    disconnect();
}

void SyncClient::retryNow() {
    if (std::holds_alternative<ConnectionState::Waiting>(state_.value)) attempt();
}

void SyncClient::attempt() {
    dropLine();
    const auto url = endpoints_.webSocket();
    log(LogLevel::info, "connecting attempt " + std::to_string(backoff_.attempt) + " to " + url);
    WebSocketRequest request{.url = url, .headers = authorization()};
    if (deviceId_) request.headers.push_back({std::string{deviceIdHeader}, *deviceId_});
    connection_ = ports_.transport.open(request, *this);
    enter({ConnectionState::Connecting{}});
}

void SyncClient::attemptLater() {
    dropLine();
    const Seconds delay = backoff_.nextDelay();
    retry_ = ports_.sleeper.wait(delay, [this] { attempt(); });
    enter({ConnectionState::Waiting{backoff_.attempt, delay}});
}

void SyncClient::opened() {
    log(LogLevel::info, "socket open");
    onTheWire_ = configuration_.retransmitOnConnect ? 0 : outbox_.count();
    beatLater();
    watchForSilence();
    enter({ConnectionState::Connected{}});
    transmitWaiting();
}

void SyncClient::ended(WebSocketEnd end) {
    std::visit(Overloaded{[this](const WebSocketEnd::Refused& answer) { refused(answer.status); },
                          [this](const WebSocketEnd::Closed& close) {
                              close.code == closeUnauthorized ? reject(refusal()) : lineClosed();
                          },
                          [this](const WebSocketEnd::Failed& failure) { lineEnded(failure.message); }},
               end.value);
}

void SyncClient::refused(int status) {
    if (status == 0) {
        askWhetherRefused();
    } else if (isRefusal(status)) {
        reject(refusal());
    } else {
        lineEnded(answered(status));
    }
}

// The socket library does not tell why the upgrade failed; a plain request with the same token finds out.
void SyncClient::askWhetherRefused() {
    dropLine();
    inquiry_ = ports_.http.send(snapshotRequest(), [this](const HttpClient::Answer& answer) {
        if (!answer) {
            lineEnded(answer.error().message);
        } else if (isRefusal(answer->status)) {
            reject(refusal());
        } else {
            lineEnded(answer->isSuccess() ? "The server did not open a socket." : answered(answer->status));
        }
    });
}

void SyncClient::reject(const ServerMessage::Error& why) {
    log(LogLevel::error, "the room refused this token; not reconnecting");
    dropLine();
    enter({ConnectionState::Rejected{}});
    listener_.received({why});
}

void SyncClient::lineClosed() {
    log(LogLevel::info, "connection closed; reconnecting");
    attemptLater();
}

void SyncClient::lineEnded(std::string_view why) {
    log(LogLevel::info, "connection ended: " + std::string{why});
    attemptLater();
}

void SyncClient::dropLine() {
    connection_.reset();
    heartbeat_.reset();
    silence_.reset();
    inquiry_.reset();
    retry_.reset();
    onTheWire_ = 0;
}

void SyncClient::enter(ConnectionState state) {
    if (state == state_) return;
    state_ = state;
    listener_.stateChanged(state);
}

void SyncClient::beatLater() {
    heartbeat_ = ports_.sleeper.wait(configuration_.heartbeatInterval, [this] {
        // Where it cannot be sent, the socket has ended, and its listener hears of that.
        static_cast<void>(connection_->send(heartbeatFrame));
        beatLater();
    });
}

void SyncClient::watchForSilence() {
    if (mutant(Mutant::silenceIsPatience)) return;
    silence_ = ports_.sleeper.wait(2 * configuration_.heartbeatInterval, [this] { lineClosed(); });
}

// Messages from the room.

void SyncClient::received(std::string_view bytes) {
    watchForSilence();
    if (bytes == heartbeatFrame || bytes == heartbeatAck) return;
    const auto message = Wire::decode<ServerMessage>(bytes);
    // A newer room may say what this version does not know.
    if (!message) return;
    backoff_.reset();
    if (const auto* ack = std::get_if<ServerMessage::Ack>(&message->value)) settle(ack->batchId);
    log(LogLevel::debug, "received " + std::string{message->caseName()});
    if (const auto* error = std::get_if<ServerMessage::Error>(&message->value);
        error != nullptr && error->code.raw == ServerErrorCode::unauthorized) {
        reject(*error);
        return;
    }
    listener_.received(*message);
}

void SyncClient::settle(const UUID& batchId) {
    const auto& batches = outbox_.pending();
    const auto batch = std::ranges::find(batches, batchId, &OutboxBatch::batchId);
    if (batch == batches.end()) return;
    const auto place = static_cast<std::size_t>(batch - batches.begin());
    if (const auto gone = outbox_.markAcked(batchId); !gone) {
        // The room knows the batch, should it be sent once more after a restart.
        log(LogLevel::error, "an acknowledged batch keeps its file: " + gone.error().message);
    }
    if (place < onTheWire_ && !mutant(Mutant::ackLeavesTheWindow)) --onTheWire_;
    transmitWaiting();
}

// Messages to the room.

std::expected<SendOutcome, SendError> SyncClient::send(std::vector<Op> ops, const UUID& batchId) {
    if (ops.size() > BoardSpec::maxOpsPerBatch) return std::unexpected(SendError{BatchTooLarge{ops.size()}});
    auto stored = outbox_.append(std::move(ops), batchId, Wire::truncatedToMilliseconds(ports_.clock.now()));
    if (!stored) return std::unexpected(asSendError(std::move(stored.error())));
    transmitWaiting();
    const bool isOnTheWire = onTheWire_ == outbox_.count();
    return SendOutcome{isOnTheWire ? SendOutcome::Way::transmitted : SendOutcome::Way::queued, std::move(*stored)};
}

void SyncClient::writable() {
    transmitWaiting();
}

// Oldest first: a batch is never on this line before one that was made before it.
void SyncClient::transmitWaiting() {
    if (!isConnected()) return;
    while (onTheWire_ < outbox_.count() && connection_->bytesToWrite() < configuration_.sendWindowBytes) {
        const auto next = mutant(Mutant::newestSentFirst) ? outbox_.count() - 1 - onTheWire_ : onTheWire_;
        const auto& batch = outbox_.pending()[next];
        if (isHeld(batch)) return;
        const auto frame = Wire::encode(ClientMessage{ClientMessage::Ops{batch.batchId, batch.ops}});
        // The outbox holds nothing that has no JSON.
        if (!frame || !connection_->send(*frame)) return;
        ++onTheWire_;
    }
}

bool SyncClient::isHeld(const OutboxBatch& batch) const {
    if (heldMedia_.empty()) return false;
    return std::ranges::any_of(mediaNamedBy(batch.ops), [this](const UUID& id) { return heldMedia_.contains(id); });
}

void SyncClient::releaseMedia(const UUID& id) {
    if (heldMedia_.erase(id) > 0) transmitWaiting();
}

void SyncClient::sendPresence(const ClientMessage::Presence& presence) {
    if (!isConnected()) return;
    const auto frame = Wire::encode(ClientMessage{presence});
    if (frame) static_cast<void>(connection_->send(*frame));
}

void SyncClient::sendPresence(std::optional<NowPlaying> nowPlaying, std::optional<Here> here, Activity activity) {
    sendPresence(
        {.nowPlaying = std::move(nowPlaying), .here = std::move(here), .activity = activity, .zone = {}, .seen = {}});
}

std::unique_ptr<HttpClient::Call>
SyncClient::snapshot(std::move_only_function<void(std::expected<Board, SnapshotError>)> then) {
    return ports_.http.send(snapshotRequest(), [then = std::move(then)](const HttpClient::Answer& answer) mutable {
        then(boardIn(answer));
    });
}

std::vector<HttpHeader> SyncClient::authorization() const {
    return {{"authorization", token_.authorizationHeaderValue()}};
}

HttpRequest SyncClient::snapshotRequest() const {
    return {.method = "GET", .url = endpoints_.snapshot(), .headers = authorization(), .body = {}};
}

} // namespace lumaro
