// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Board/LiveBoard.h"

#include "Lumaro/Model/Board/StarterBoard.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardLogic/Expiry.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Presence/Pomodoro.h"
#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace lumaro {
namespace {

constexpr Seconds arrivalSpan{2};

std::vector<const BoardItem*> onlyIn(const Board& board, const Board& other) {
    std::set<UUID> known;
    for (const auto& item : other.items) known.insert(item.id);
    std::vector<const BoardItem*> found;
    for (const auto& item : board.items) {
        if (!known.contains(item.id)) found.push_back(&item);
    }
    return found;
}

} // namespace

LiveBoard::LiveBoard(std::string folder, Ports ports, BoardState& state, Neighbours neighbours)
    : ports_(ports), state_(state), neighbours_(std::move(neighbours)),
      store_(std::move(folder), {ports.files, ports.sleeper, ports.background, ports.log}),
      falling_(ports.sleeper, [this] { show(); }), expiry_(ports.sleeper, ports.clock, [this] { takeExpiredDown(); }),
      bell_(ports.sleeper, ports.clock, [this](Instant end) { ring(end); }),
      told_({ports.notifications, ports.defaults}, neighbours_.answered) {
    shared_ = SharedBoard{starterBoard(now()), {}, now()};
    show();
}

Instant LiveBoard::now() const {
    return Wire::truncatedToMilliseconds(ports_.clock.now());
}

void LiveBoard::adopt(const CoupleToken& token) {
    token_ = token;
    if (auto known = store_.load(token.coupleId)) {
        shared_ = SharedBoard{std::move(*known), {}, now()};
        store_.save(token.coupleId, shared_.confirmed());
    } else if (isStarter_) {
        shared_ = {}; // the starter board is never shared
    }
    isStarter_ = false;
    show();
    // The room may have nothing new to tell.
    bell_.watch(board(), token.slot);
    if (!mutant(Mutant::expiryWaitsForNews)) expiry_.watch(board());
    neighbours_.changedByOthers();
}

void LiveBoard::forget() {
    token_.reset();
    state_.arriving.clear();
    state_.unstoredBatches.clear();
    falling_.clear();
    arrivalClearTask_.reset();
    expiry_.stop();
    bell_.stop();
    told_.forget();
    isStarter_ = true;
    shared_ = SharedBoard{starterBoard(now()), {}, now()};
    show();
    neighbours_.changedByOthers();
}

// One's own acts.

std::expected<UUID, ActFault> LiveBoard::act(std::vector<Op> ops) {
    if (!token_) return std::unexpected(ActFault::notOnBoard);
    if (!neighbours_.connection.isOpen()) return std::unexpected(ActFault::notStored);
    const Board before = board();
    auto batches = Edits::batches(std::move(ops));
    Board after = before;
    for (const auto& batch : batches) {
        auto result = BoardLogic::apply(batch, std::move(after), now());
        if (!result.rejected.empty()) return std::unexpected(faultOf(result.rejected.front().reason));
        after = std::move(result.board);
    }
    const Announcer::Update update{neighbours_.announcer};
    UUID last;
    for (auto& batch : batches) {
        last = ports_.ids.next();
        shared_.enqueue({last, batch}, now());
        state_.unstoredBatches.insert(last);
        neighbours_.connection.send(last, std::move(batch));
    }
    changed(before);
    return last;
}

void LiveBoard::stored(const UUID& batchId) {
    state_.unstoredBatches.erase(batchId);
    neighbours_.announcer.changed(AppChange::connection);
}

void LiveBoard::withdraw(const UUID& batchId) {
    state_.unstoredBatches.erase(batchId);
    state_.failedBatches.push_back(batchId);
    if (state_.failedBatches.size() > BoardState::maxFailedBatches) state_.failedBatches.pop_front();
    neighbours_.announcer.changed(AppChange::board);
    const Board before = board();
    shared_.withdraw(batchId, now());
    changedByOthers(before);
}

// The room's messages.

void LiveBoard::opened(std::vector<PendingBatch> waiting) {
    const Board before = board();
    // What was done since the line was asked for comes behind what waited before. All else that is shown is in the
    // outbox, or was in the room's hands when the line before this one ended.
    std::ranges::copy_if(shared_.pending(), std::back_inserter(waiting), [this](const PendingBatch& batch) {
        return mutant(Mutant::reopeningRepeatsPending) || state_.unstoredBatches.contains(batch.batchId);
    });
    shared_ = SharedBoard{shared_.confirmed(), std::move(waiting), now()};
    changedByOthers(before);
    if (!mutant(Mutant::expiryWaitsForNews)) expiry_.watch(board());
}

void LiveBoard::take(const ServerMessage::Welcome& welcome) {
    const Board before = board();
    shared_.welcome(welcome.board, now());
    changedByOthers(before);
}

void LiveBoard::take(const ServerMessage::Ops& relayed) {
    const Board before = board();
    shared_.applyRemote(relayed.ops, now());
    changedByOthers(before);
    if (!token_ || relayed.author == token_->slot) return;
    neighbours_.announcer.did(deedsBetween(before, board()));
    welcomeItems(before);
}

void LiveBoard::take(const ServerMessage::Ack& ack) {
    const Board before = board();
    shared_.acked(ack.batchId, now());
    changedByOthers(before);
}

void LiveBoard::take(const ServerMessage::Thread& thread) {
    const Board before = board();
    shared_.tieThread(thread.tiedAt);
    changedByOthers(before);
}

void LiveBoard::takeDownPicture(const UUID& mediaId) {
    for (const auto& item : Board{board()}.items) {
        if (mediumOf(item.payload) != mediaId) continue;
        auto gone = Edits::takeDown(board(), item.id, {token_ ? token_->slot : PartnerID::a, now()});
        if (gone && act(std::move(*gone))) neighbours_.changedByOthers();
    }
}

void LiveBoard::lookAtClock() {
    if (!token_) return;
    expiry_.watch(board());
    bell_.watch(board(), token_->slot);
}

// What is shown.

void LiveBoard::changedByOthers(const Board& before) {
    changed(before);
    if (before != board()) neighbours_.changedByOthers();
}

void LiveBoard::changed(const Board& before) {
    if (token_) store_.save(token_->coupleId, shared_.confirmed());
    if (before == board()) return;
    letFall(before);
    show();
    if (!token_) return;
    bell_.watch(board(), token_->slot);
    expiry_.watch(board());
    neighbours_.connection.want(board());
}

// Those that fall are still drawn, behind nothing that matters.
void LiveBoard::show() {
    state_.board = board();
    for (auto& item : falling_.items()) state_.board.items.push_back(std::move(item));
    state_.falling = falling_.ids();
    neighbours_.announcer.changed(AppChange::board);
}

void LiveBoard::letFall(const Board& before) {
    for (const auto* const item : onlyIn(before, board())) falling_.add(*item);
    for (const auto* const item : onlyIn(board(), before)) falling_.remove(item->id);
}

void LiveBoard::welcomeItems(const Board& before) {
    const auto added = onlyIn(board(), before);
    if (added.empty()) return;
    std::erase_if(state_.arriving, [this](const UUID& id) { return board().find(id) == nullptr; });
    for (const auto* const item : added) state_.arriving.insert(item->id);
    arrivalClearTask_ = ports_.sleeper.wait(arrivalSpan, [this] {
        state_.arriving.clear();
        neighbours_.announcer.changed(AppChange::board);
    });
    neighbours_.announcer.changed(AppChange::board);
    std::optional<std::string> picturePath;
    for (const auto* const item : added) {
        const auto id = mediumOf(item->payload);
        if (id && !picturePath) picturePath = neighbours_.media.pathOf(*id);
    }
    told_.tellOfItems(added, board(), neighbours_.partnerName, std::move(picturePath));
}

// As time passes.

void LiveBoard::takeExpiredDown() {
    const Announcer::Update update{neighbours_.announcer};
    auto ops = BoardLogic::expiryOps(board(), now());
    const bool isNothing = ops.empty();
    if (!isNothing && act(std::move(ops))) return neighbours_.changedByOthers();
    // The clock may have been set back meanwhile. Without a line there is nothing to try before there is one.
    if (isNothing || neighbours_.connection.isOpen()) lookAtClock();
}

void LiveBoard::ring(Instant end) {
    if (state_.lastBlockRang == end || !token_) return;
    state_.lastBlockRang = end;
    if (ports_.defaults.boolean("playsSounds").value_or(true)) ports_.sounds.play("Glass");
    const auto ended = std::ranges::find_if(board().items, [&](const BoardItem& item) {
        const auto* const timer = item.payload.as<PomodoroPayload>();
        return timer != nullptr && Pomodoro::endsAt(*timer) == end && Pomodoro::includes(*timer, token_->slot);
    });
    if (ended != board().items.end()) told_.tellOfBlock(*ended, neighbours_.partnerName);
    neighbours_.announcer.changed(AppChange::board);
}

} // namespace lumaro
