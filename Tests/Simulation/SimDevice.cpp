// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimDevice.h"

#include "Tests/Simulation/SimApp.h"
#include "Tests/Simulation/SimCommand.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {

SimDevice::SimDevice(std::size_t index, PartnerID person, Kind kind, Parts parts)
    : index_(index), person_(person), kind_(kind), parts_(parts), disk_(index, parts.sabotage, parts.coverage),
      clock_(parts.time), ids_((index + 1) << 32) {
    defaults_.setString("deviceId", deviceId());
}

SimDevice::~SimDevice() = default;

SyncClient::Configuration SimDevice::configuration() const {
    SyncClient::Configuration configuration;
    configuration.retransmitOnConnect = parts_.sabotage != Sabotage::nothingIsResent;
    return configuration;
}

void SimDevice::pair(CoupleToken token) {
    stop();
    keyring_.items[{std::string{keychainService}, "joinToken"}] = token.raw;
    defaults_.setString("pairedCoupleId", token.coupleId);
    token_ = std::move(token);
    needsToken_ = false;
}

void SimDevice::unpair() {
    stop();
    needsToken_ = true;
}

// The program

void SimDevice::start() {
    if (program_ || needsToken_) return;
    parts_.trace.add("start", index_);
    if (kind_ == Kind::application) {
        program_ = std::make_unique<SimApp>(*this);
        return;
    }
    if (auto outbox = openOutbox()) program_ = std::make_unique<SimCommand>(*this, std::move(*outbox));
}

void SimDevice::stop() {
    if (!program_) return;
    parts_.trace.add("stop", index_);
    program_.reset();
}

void SimDevice::quit() {
    if (!program_) return;
    program_->quit();
    stop();
}

void SimDevice::losePower(std::size_t tornBytes) {
    parts_.coverage.note(Met::powerLosses);
    parts_.network.abandon(index_);
    stop();
    disk_.losePower(tornBytes);
}

void SimDevice::bury() {
    // Of an act in many batches the first ones may be stored, and even sent.
    if (program_ && program_->client() != nullptr) noteFound(program_->client()->pending());
    stop();
}

void SimDevice::check() {
    if (!program_ || program_->client() == nullptr) return;
    parts_.witness.checkOutbox(index_, program_->client()->pending());
    program_->check();
}

void SimDevice::checkAtRest() {
    if (program_) program_->checkAtRest();
}

// What its program tells

std::expected<DurableOutbox, FileError> SimDevice::openOutbox() {
    auto outbox = DurableOutbox::open(disk_, ids_, "/home/outbox/" + token_->coupleId);
    if (!outbox) {
        parts_.coverage.note(Met::startsRefusedByDisk);
        return outbox;
    }
    parts_.trace.add("outbox", index_, std::to_string(outbox->count()));
    parts_.coverage.note(Met::outboxRecoveries, outbox->count());
    parts_.witness.checkOutbox(index_, outbox->pending());
    noteFound(outbox->pending());
    return outbox;
}

void SimDevice::noteFound(const std::deque<OutboxBatch>& batches) {
    for (const auto& batch : batches) parts_.witness.accepted(index_, batch, Witness::Acceptance::asFound);
}

void SimDevice::stored(const OutboxBatch& batch) {
    parts_.coverage.note(Met::acts);
    parts_.witness.accepted(index_, batch, Witness::Acceptance::byWord);
}

void SimDevice::heard(const ServerMessage& message, const Board& confirmed) {
    parts_.witness.deviceHeard(index_, message, confirmed);
    if (std::holds_alternative<ServerMessage::Thread>(message.value)) parts_.coverage.note(Met::threadsTied);
}

void SimDevice::lineChanged(const ConnectionState& state) {
    if (std::holds_alternative<ConnectionState::Connected>(state.value)) parts_.witness.lineOpened(index_);
    if (std::holds_alternative<ConnectionState::Rejected>(state.value)) {
        parts_.coverage.note(Met::tokensRejected);
        needsToken_ = true;
    }
}

void SimDevice::complain(std::string_view what) {
    parts_.witness.complain("device " + std::to_string(index_) + " " + std::string{what});
}

void SimDevice::checkShown(const SharedBoard& shared) {
    const auto& waiting = program_->client()->pending();
    if (!std::ranges::equal(waiting, shared.pending(), {}, &OutboxBatch::batchId, &PendingBatch::batchId)) {
        return complain("shows other batches over the room's board than wait");
    }
    auto shown = shared.confirmed();
    for (const auto& batch : waiting) shown = BoardLogic::apply(batch.ops, std::move(shown), clock_.now()).board;
    if (lookOf(shown) != lookOf(shared.shown())) complain("does not show what waits over the room's board");
}

} // namespace lumaro::simulation
