// SPDX-License-Identifier: Apache-2.0
// What comes from the room and what is done to the board: both change what is shown, in one way.
#include "Lumaro/Model/AppModel.h"
#include "Lumaro/Model/BoardNews.h"
#include "Lumaro/Model/PairingUnderWay.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardLogic/Expiry.h"
#include "LumaroCore/BoardModel/Media.h"
#include "LumaroCore/Support/Mutant.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <ranges>
#include <utility>

namespace lumaro {
namespace {

constexpr Seconds arrivalSpan{2};
constexpr Seconds fallSpan{0.85};
constexpr Seconds expiryPause{0.25};

bool holds(const Board& board, const UUID& id) {
    return std::ranges::any_of(board.items, [&](const BoardItem& item) { return item.id == id; });
}

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

// One's own acts.

std::expected<UUID, ActFault> AppModel::act(std::vector<Op> ops) {
    if (!state_.token) return std::unexpected(ActFault::notOnBoard);
    if (!link_) return std::unexpected(ActFault::notStored);
    const Board before = board();
    auto batches = Edits::batches(std::move(ops));
    Board after = before;
    for (const auto& batch : batches) {
        auto result = BoardLogic::apply(batch, std::move(after), now());
        if (!result.rejected.empty()) return std::unexpected(faultOf(result.rejected.front().reason));
        after = std::move(result.board);
    }
    UUID last;
    for (auto& batch : batches) {
        last = ports_.ids.next();
        shared_.enqueue({last, batch}, now());
        unstored_.insert(last);
        link_->send(last, std::move(batch));
    }
    state_.unstoredBatches = unstored_.size();
    boardChanged(before);
    announce();
    return last;
}

void AppModel::stored(const UUID& batchId, SendOutcome::Way way, std::size_t pending) {
    unstored_.erase(batchId);
    state_.unstoredBatches = unstored_.size();
    state_.lastSendQueued = way == SendOutcome::Way::queued;
    state_.pendingBatches = pending;
    announce();
}

void AppModel::notStored(const UUID& batchId, const SendError&) {
    log(LogLevel::error, "an act could not be stored");
    unstored_.erase(batchId);
    state_.unstoredBatches = unstored_.size();
    const Board before = board();
    shared_.withdraw(batchId, now());
    editor_.withdraw(batchId);
    boardChanged(before);
    say(std::string{textOf(ActFault::notStored)});
}

// The room's messages.

void AppModel::opened(std::vector<PendingBatch> waiting) {
    const Board before = board();
    // What was done since the line was asked for comes behind what waited before. All else that hangs here is in the
    // outbox, or was in the room's hands when the line before this one ended.
    std::ranges::copy_if(shared_.pending(), std::back_inserter(waiting), [this](const PendingBatch& batch) {
        return mutant(Mutant::reopeningRepeatsPending) || unstored_.contains(batch.batchId);
    });
    state_.pendingBatches = waiting.size();
    shared_ = SharedBoard{shared_.confirmed(), std::move(waiting), now()};
    boardChanged(before);
    if (!mutant(Mutant::expiryWaitsForNews)) scheduleNextExpiry();
    announce();
}

void AppModel::couldNotOpen(const std::string& why) {
    log(LogLevel::error, "connect: SyncClient init failed: " + why);
}

void AppModel::stateChanged(const ConnectionState& state) {
    state_.connection = state;
    if (std::holds_alternative<ConnectionState::Connected>(state.value) && transfer_) transfer_->retryNow();
    announce();
}

void AppModel::received(const ServerMessage& message, std::size_t pending) {
    log(LogLevel::debug, "app handling message");
    state_.pendingBatches = pending;
    std::visit([this](const auto& one) { take(one); }, message.value);
    announce();
}

void AppModel::take(const ServerMessage::Welcome& welcome) {
    const Board before = board();
    shared_.welcome(welcome.board, now());
    meet(welcome.roster, welcome.names);
    boardChanged(before);
    sendPresenceSoon();
}

void AppModel::take(const ServerMessage::Roster& roster) {
    const bool wasOnline = state_.presence.isPartnerOnline;
    meet(roster.online, roster.names);
    if (!wasOnline && state_.presence.isPartnerOnline) ports_.wallpaper.refresh();
}

void AppModel::take(const ServerMessage::Ops& relayed) {
    const Board before = board();
    shared_.applyRemote(relayed.ops, now());
    boardChanged(before);
    if (relayed.author != slot()) welcomeItems(onlyIn(board(), before));
}

void AppModel::take(const ServerMessage::Ack& ack) {
    const Board before = board();
    shared_.acked(ack.batchId, now());
    boardChanged(before);
}

void AppModel::take(const ServerMessage::Presence& presence) {
    if (presence.from == slot()) return;
    state_.presence.activity = presence.activity;
    state_.presence.nowPlaying = presence.nowPlaying;
    state_.presence.here = presence.here;
    ports_.wallpaper.refresh();
}

void AppModel::take(const ServerMessage::Calendar& calendar) {
    state_.presence.calendarStatus[calendar.slot] = calendar.status;
    if (calendar.day) {
        state_.presence.calendar[calendar.slot] = *calendar.day;
    } else {
        state_.presence.calendar.erase(calendar.slot);
    }
    ports_.wallpaper.refresh();
}

void AppModel::take(const ServerMessage::Thread& thread) {
    const Board before = board();
    shared_.tieThread(thread.tiedAt);
    boardChanged(before);
}

void AppModel::take(const ServerMessage::Error& error) {
    if (error.code.raw == ServerErrorCode::unauthorized) {
        if (state_.connectionRejected) return;
        log(LogLevel::error, "the room no longer knows this mac's token");
        state_.connectionRejected = true;
        state_.presence = {};
    } else if (error.code.raw == ServerErrorCode::badMessage) {
        log(LogLevel::error, "the room could not read a frame: " + error.message);
    } else {
        log(LogLevel::error, "room error " + std::string{error.code.raw} + ": " + error.message);
    }
}

void AppModel::meet(PartnerSet online, const std::optional<SlotNames>& names) {
    state_.presence.isPartnerOnline = online.contains(other(slot()));
    if (!state_.presence.isPartnerOnline) {
        state_.presence.activity = Activity::idle;
        state_.presence.nowPlaying.reset();
    }
    if (!names) return;
    for (const auto person : {PartnerID::a, PartnerID::b}) {
        if (const auto& name = names->of(person)) state_.partnerNames[person] = *name;
    }
    if (const auto& name = names->of(other(slot())); name && *name != state_.partnerDisplayName)
        learnPartnerName(*name);
}

// The board that is shown.

void AppModel::boardChanged(const Board& before) {
    if (state_.token) boardStore_.save(state_.token->coupleId, shared_.confirmed());
    if (before == board()) return;
    letFall(before);
    editor_.setLiveItems(board());
    showBoard();
    bell_.watch(board(), slot());
    scheduleNextExpiry();
    if (transfer_) transfer_->want(board());
    ports_.wallpaper.refresh();
}

// Those that fall are still drawn, behind nothing that matters.
void AppModel::showBoard() {
    state_.board = board();
    for (const auto& [id, item] : fallingItems_) state_.board.items.push_back(item);
}

void AppModel::letFall(const Board& before) {
    for (const auto* const item : onlyIn(before, board())) fallingItems_.insert_or_assign(item->id, *item);
    std::erase_if(fallingItems_, [&](const auto& entry) { return holds(board(), entry.first); });
    state_.falling.clear();
    for (const auto& [id, item] : fallingItems_) state_.falling.insert(id);
    if (fallingItems_.empty()) return;
    fallTask_ = ports_.sleeper.wait(fallSpan, [this] {
        fallingItems_.clear();
        state_.falling.clear();
        showBoard();
        announce();
    });
}

void AppModel::welcomeItems(const std::vector<const BoardItem*>& added) {
    if (added.empty()) return;
    for (const auto* const item : added) state_.arriving.insert(item->id);
    arrivalClearTask_ = ports_.sleeper.wait(arrivalSpan, [this] {
        state_.arriving.clear();
        announce();
    });
    if (!ports_.defaults.boolean("notifiesOfItems").value_or(true)) return;
    auto notification = newsOf(added, board(), state_.partnerDisplayName);
    for (const auto* const item : added) {
        const auto id = mediumOf(item->payload);
        if (id && !notification.picturePath) notification.picturePath = media_.pathOf(*id);
    }
    ports_.notifications.post(std::move(notification));
}

void AppModel::scheduleNextExpiry() {
    std::optional<Instant> next;
    for (const auto& item : board().items) {
        const auto* const note = item.payload.as<NotePayload>();
        if (note != nullptr && note->expiresAt && (!next || *note->expiresAt < *next)) next = note->expiresAt;
    }
    if (!next || !state_.token) return scheduleExpiry(std::nullopt);
    scheduleExpiry(std::max(std::chrono::duration_cast<Seconds>(*next - ports_.clock.now()), Seconds{0}));
}

void AppModel::scheduleExpiry(std::optional<Seconds> after) {
    expiryTask_.reset();
    if (!after) return;
    expiryTask_ = ports_.sleeper.wait(
        *after, [this] { expiryTask_ = ports_.sleeper.wait(expiryPause, [this] { takeExpiredDown(); }); });
}

void AppModel::takeExpiredDown() {
    auto ops = BoardLogic::expiryOps(board(), now());
    // The clock may have been set back meanwhile. Without a line there is nothing to try before there is one.
    if (ops.empty() || (!act(std::move(ops)) && link_)) scheduleNextExpiry();
}

void AppModel::ring(Instant end) {
    if (state_.lastBlockRang == end) return;
    state_.lastBlockRang = end;
    if (ports_.defaults.boolean("playsSounds").value_or(true)) ports_.sounds.play("Glass");
    announce();
}

} // namespace lumaro
