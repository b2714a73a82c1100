// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/SyncClient/BoardSession.h"

#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <utility>

namespace lumaro {
namespace {

std::vector<PendingBatch> waitingIn(const DurableOutbox& outbox) {
    std::vector<PendingBatch> waiting;
    for (const auto& batch : outbox.pending()) waiting.push_back({batch.batchId, batch.ops});
    return waiting;
}

// Old tombstones and the board's own instant are not on screen.
bool looksLike(const Board& one, const Board& other) {
    return one.background == other.background && one.threadTiedAt == other.threadTiedAt && one.items == other.items;
}

} // namespace

BoardSession::BoardSession(Setup setup, SyncClient::Ports ports, UUIDSource& ids, Listener& listener)
    : clock_(ports.clock), ids_(ids), listener_(listener),
      board_(std::move(setup.lastKnown), waitingIn(setup.outbox), now()),
      client_(std::move(setup.serverURL), std::move(setup.token), std::move(setup.deviceId), std::move(setup.outbox),
              setup.configuration, ports, *this) {
}

Instant BoardSession::now() {
    return Wire::truncatedToMilliseconds(clock_.now());
}

std::expected<BoardSession::ActOutcome, SendError> BoardSession::act(std::vector<Op> ops) {
    const Board before = board_.shown();
    std::expected<ActOutcome, SendError> outcome;
    for (auto& batch : Edits::batches(std::move(ops))) {
        // Stored first: nothing is on screen that a crash could take off it.
        auto sent = client_.send(std::move(batch), ids_.next());
        if (!sent) {
            outcome = std::unexpected(std::move(sent.error()));
            break;
        }
        if (sent->way == SendOutcome::Way::queued) outcome->way = SendOutcome::Way::queued;
        outcome->batches.push_back(sent->batch.batchId);
        board_.enqueue({sent->batch.batchId, std::move(sent->batch.ops)}, now());
    }
    announce(before);
    return outcome;
}

void BoardSession::received(const ServerMessage& message) {
    const Board before = board_.shown();
    std::visit(
        Overloaded{[this](const ServerMessage::Welcome& welcome) {
                       board_.welcome(welcome.board, now());
                       meet(welcome.roster, welcome.names, welcome.paired);
                   },
                   [this](const ServerMessage::Roster& roster) { meet(roster.online, roster.names, roster.paired); },
                   [this](const ServerMessage::Ops& relayed) { board_.applyRemote(relayed.ops, now()); },
                   [this](const ServerMessage::Ack& ack) { board_.acked(ack.batchId, now()); },
                   [this](const ServerMessage::Thread& thread) { board_.tieThread(thread.tiedAt); },
                   [](const ServerMessage::Presence&) {}, [](const ServerMessage::Calendar&) {},
                   [](const ServerMessage::Error&) {}},
        message.value);
    announce(before);
    listener_.received(message);
}

void BoardSession::stateChanged(const ConnectionState& state) {
    listener_.stateChanged(state);
}

void BoardSession::meet(PartnerSet online, const std::optional<SlotNames>& names, PartnerSet paired) {
    online_ = online;
    paired_ = paired;
    if (names) names_ = *names;
}

void BoardSession::announce(const Board& before) {
    // A copy: the listener may act, and so change the board, while it reads.
    const Board after = board_.shown();
    if (!looksLike(before, after)) listener_.boardChanged(before, after);
}

} // namespace lumaro
