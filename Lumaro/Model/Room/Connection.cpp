// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Room/Connection.h"

#include "LumaroCore/Protocol/CoupleEndpoints.h"

#include <utility>

namespace lumaro {

void Connection::open(Address address) {
    const Announcer::Update update{announcer_};
    dropLine();
    state_.isOpening = false;
    who_ = address.token.redacted();
    MediaTransfer::Listener& listener = *this;
    transfer_ = std::make_unique<MediaTransfer>(
        CoupleEndpoints{address.serverURL, address.token.coupleId}, address.token, media_,
        MediaTransfer::Ports{ports_.http, ports_.sleeper, ports_.background, ports_.log}, listener);
    auto opened = ports_.rooms.open({std::move(address.serverURL), std::move(address.token),
                                     std::move(address.deviceId), transfer_->waitingToGoUp()},
                                    *this);
    announcer_.changed(AppChange::connection);
    if (!opened) return couldNotOpen(opened.error());
    link_ = std::move(*opened);
    state_.isOpening = true;
}

void Connection::close() {
    const Announcer::Update update{announcer_};
    dropLine();
    transfer_.reset();
    state_ = {};
    announcer_.changed(AppChange::connection);
}

void Connection::dropLine() {
    if (!link_) return;
    // It may have something to tell yet.
    link_.reset();
    log(LogLevel::info, "message stream finished");
}

void Connection::send(const UUID& batchId, std::vector<Op> ops) {
    if (link_) link_->send(batchId, std::move(ops));
}

void Connection::sendPresence(OwnPresence presence) {
    if (link_) link_->sendPresence(std::move(presence));
}

void Connection::want(const Board& board) {
    if (transfer_) transfer_->want(board);
}

void Connection::retryNow() {
    if (link_) link_->retryNow();
    if (transfer_) transfer_->retryNow();
}

void Connection::storeMedia(const UUID& id, std::string bytes, MediaTransfer::Stored then) {
    if (!transfer_ || !link_) return then(std::unexpected(MediaError{}));
    link_->holdMedia(id);
    transfer_->putUp(id, std::move(bytes), [this, id, then = std::move(then)](auto stored) mutable {
        const Announcer::Update update{announcer_};
        if (!stored && link_) link_->releaseMedia(id);
        then(std::move(stored));
    });
}

// The line.

void Connection::opened(std::vector<PendingBatch> waiting) {
    const Announcer::Update update{announcer_};
    log(LogLevel::info, "connect: client created for " + who_);
    state_.isOpening = false;
    state_.pendingBatches = waiting.size();
    announcer_.changed(AppChange::connection);
    listener_.opened(std::move(waiting));
}

void Connection::couldNotOpen(const std::string& why) {
    log(LogLevel::error, "connect: SyncClient init failed: " + why);
    state_.isOpening = false;
    announcer_.changed(AppChange::connection);
}

void Connection::stateChanged(const ConnectionState& state) {
    const Announcer::Update update{announcer_};
    state_.connection = state;
    announcer_.changed(AppChange::connection);
    if (std::holds_alternative<ConnectionState::Connected>(state.value) && transfer_) transfer_->retryNow();
}

void Connection::received(const ServerMessage& message, std::size_t pending) {
    const Announcer::Update update{announcer_};
    log(LogLevel::debug, "app handling message");
    if (std::exchange(state_.pendingBatches, pending) != pending) announcer_.changed(AppChange::connection);
    if (const auto* const error = std::get_if<ServerMessage::Error>(&message.value)) return take(*error);
    listener_.received(message);
}

void Connection::take(const ServerMessage::Error& error) {
    if (error.code.raw == ServerErrorCode::unauthorized) {
        if (std::exchange(state_.connectionRejected, true)) return;
        log(LogLevel::error, "the room no longer knows this mac's token");
        announcer_.changed(AppChange::connection);
        listener_.refused();
    } else if (error.code.raw == ServerErrorCode::badMessage) {
        log(LogLevel::error, "the room could not read a frame: " + error.message);
    } else {
        log(LogLevel::error, "room error " + std::string{error.code.raw} + ": " + error.message);
    }
}

void Connection::stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) {
    const Announcer::Update update{announcer_};
    state_.lastSendQueued = way == SendOutcome::Way::queued;
    state_.pendingBatches = pending;
    announcer_.changed(AppChange::connection);
    listener_.stored(batchId);
}

void Connection::notStored(const UUID& batchId, const SendError&) {
    const Announcer::Update update{announcer_};
    log(LogLevel::error, "an act could not be stored");
    listener_.notStored(batchId);
}

// The pictures.

void Connection::arrived(const UUID&) {
    announcer_.changed(AppChange::pictures);
}

void Connection::wentUp(const UUID& id) {
    if (link_) link_->releaseMedia(id);
}

void Connection::couldNotGoUp(const UUID& id, MediaFault why) {
    const Announcer::Update update{announcer_};
    log(LogLevel::error, "a picture could not go up");
    listener_.couldNotGoUp(id, why);
    if (link_) link_->releaseMedia(id);
}

} // namespace lumaro
