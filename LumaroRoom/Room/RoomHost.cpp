// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Room/RoomHost.h"

#include "LumaroCore/Support/Mutant.h"
#include "LumaroCore/Support/Overloaded.h"
#include "LumaroCore/Support/Wire.h"

#include <algorithm>
#include <deque>
#include <new>
#include <utility>

namespace lumaro {
namespace {

constexpr std::string_view category = "room";

// A socket is read on once this much of what it may have waiting is left.
constexpr std::size_t resumeShare = 2;

} // namespace

/// What comes to a room from outside, kept until its effects are let out, so that it can be done again.
struct RoomHost::Input {
    struct Join {
        TokenHash token;
    };
    struct Frame {
        std::string text;
        Pace pace;
    };
    struct Leave {};
    struct MembersRead {
        Members members;
        std::uint64_t readAs;
    };
    /// The room itself taking over its sockets; never done again as such.
    struct Resume {};

    SocketId socket{};
    std::variant<Join, Frame, Leave, MembersRead, Resume> what;
};

/// A socket of a room; it stays until its leaving is let out.
struct RoomHost::Visitor {
    Room::Seat seat;
    bool isSeated = false; ///< its welcome was let out
    std::size_t waitingFrames = 0;
    std::size_t waitingBytes = 0;
    bool isPaused = false;

    SocketId id() const { return seat.socket; }
    bool isOverTheLimits() const { return waitingFrames >= maxWaitingFrames || waitingBytes >= maxWaitingBytes; }
    bool hasRoomAgain() const {
        return waitingFrames <= maxWaitingFrames / resumeShare && waitingBytes <= maxWaitingBytes / resumeShare;
    }
};

/// A step whose effects wait.
struct RoomHost::Flight {
    Input input;
    std::vector<RoomEffect> effects;
    RoomTally tally;
    std::optional<UUID> batchId;
    bool isDurable = false;
};

/// A room in memory, or on its way there.
struct RoomHost::Hosted : std::enable_shared_from_this<Hosted> {
    std::string coupleId;
    std::optional<Room> room;     ///< the old one while it is read again
    bool isReady = false;         ///< not while it is read
    std::uint64_t readAs = 0;     ///< the number of the read it comes from
    std::uint64_t generation = 0; ///< what was submitted for an older one does not count any more
    /// Whether a commit since the read was refused or failed. What came after it builds on it, and must not be stored
    /// even if another node's commits have made the versions fit. Touched on the store's thread alone.
    std::shared_ptr<bool> isCut;
    std::optional<UUID> taken; ///< the batch that the store had before, when that is why it is read again
    std::vector<Visitor> visitors;
    std::vector<Input> waiting; ///< until it is ready
    std::deque<Flight> flights; ///< those after the first wait for it too
    int quietTicks = 0;

    Visitor* find(SocketId socket) {
        const auto found = std::ranges::find(visitors, socket, &Visitor::id);
        return found == visitors.end() ? nullptr : &*found;
    }
    void remove(SocketId socket) {
        std::erase_if(visitors, [&](const Visitor& one) { return one.id() == socket; });
    }
};

RoomHost::RoomHost(StoreQueue& store, RoomSockets& sockets, WallClock& clock, Log& log)
    : store_(store), sockets_(sockets), clock_(clock), log_(log) {
}

RoomHost::~RoomHost() = default;

// Finding

RoomHost::Hosted* RoomHost::find(const std::string& coupleId) const {
    const auto found = rooms_.find(coupleId);
    return found == rooms_.end() ? nullptr : found->second.get();
}

RoomHost::Visitor* RoomHost::visitor(SocketId socket) const {
    const auto where = whereabouts_.find(socket);
    return where == whereabouts_.end() ? nullptr : where->second->find(socket);
}

PartnerSet RoomHost::online(const std::string& coupleId) const {
    const auto* hosted = find(coupleId);
    return hosted != nullptr && hosted->room ? hosted->room->online() : PartnerSet{};
}

RoomHost::Figures RoomHost::figures() const {
    auto figures = figures_;
    figures.rooms = rooms_.size();
    figures.sockets = whereabouts_.size();
    return figures;
}

bool RoomHost::wantsMore(SocketId socket) const {
    const auto* one = visitor(socket);
    return one == nullptr || !one->isPaused;
}

// Coming and going

RoomHost::Hosted& RoomHost::host(const std::string& coupleId) {
    auto& place = rooms_[coupleId];
    if (!place) {
        place = std::make_shared<Hosted>();
        place->coupleId = coupleId;
    }
    return *place;
}

void RoomHost::authorize(const std::string& coupleId, TokenHash token,
                         std::move_only_function<void(StoreResult<bool>)> then) {
    struct Found {
        bool isAccepted = false;
        Members members;
        std::optional<RoomRecord> room;
    };
    auto found = std::make_shared<Found>();
    const bool isHere = find(coupleId) != nullptr;
    auto work = [found, coupleId, token, isHere](Store& store) -> StoreResult<void> {
        auto members = store.members(coupleId);
        if (!members) return std::unexpected(std::move(members.error()));
        found->isAccepted = members->findToken(token) != nullptr;
        found->members = std::move(*members);
        if (isHere || !found->isAccepted) return {};
        auto room = store.loadRoom(coupleId);
        if (!room) return std::unexpected(std::move(room.error()));
        found->room = std::move(*room);
        return {};
    };
    store_.submit(std::move(work), [this, alive = std::weak_ptr{alive_}, found, coupleId, readAs = ++reads_,
                                    then = std::move(then)](StoreResult<void> done) mutable {
        if (alive.expired()) return;
        if (!done) {
            then(std::unexpected(std::move(done.error())));
            return;
        }
        if (found->isAccepted && find(coupleId) != nullptr) {
            takeMembers(coupleId, std::move(found->members), readAs);
        } else if (found->room) {
            auto& hosted = host(coupleId);
            hosted.readAs = readAs;
            guarded(hosted, [&] { loaded(hosted, std::move(found->room)); });
        }
        then(found->isAccepted);
    });
}

void RoomHost::joined(SocketId socket, const std::string& coupleId, TokenHash token) {
    const bool isHere = find(coupleId) != nullptr;
    auto& hosted = host(coupleId);
    if (!isHere) load(hosted);
    whereabouts_[socket] = &hosted;
    hosted.visitors.push_back({.seat = {.socket = socket, .token = token}});
    hosted.quietTicks = 0;
    take(hosted, {.socket = socket, .what = Input::Join{token}});
}

void RoomHost::received(SocketId socket, std::string_view frame, Pace pace) {
    auto* sender = visitor(socket);
    if (sender == nullptr) return;
    Input input{.socket = socket, .what = Input::Frame{.text = std::string{frame}, .pace = pace}};
    sender->waitingFrames += 1;
    sender->waitingBytes += frame.size();
    sender->isPaused = sender->isPaused || sender->isOverTheLimits();
    take(*whereabouts_.at(socket), std::move(input));
}

void RoomHost::left(SocketId socket) {
    const auto where = whereabouts_.find(socket);
    if (where == whereabouts_.end()) return;
    auto& hosted = *where->second;
    whereabouts_.erase(where);
    hosted.quietTicks = 0;
    take(hosted, {.socket = socket, .what = Input::Leave{}});
}

void RoomHost::tick() {
    std::erase_if(rooms_, [](auto& entry) {
        auto& hosted = *entry.second;
        if (!hosted.isReady || !hosted.flights.empty()) return false;
        hosted.quietTicks = std::min(hosted.quietTicks + 1, ticksUntilRest);
        if (hosted.visitors.empty()) return hosted.quietTicks >= ticksKeptEmpty;
        if (hosted.quietTicks == ticksUntilRest) hosted.room->rest();
        return false;
    });
}

// Members

void RoomHost::refreshMembers(const std::string& coupleId) {
    if (find(coupleId) == nullptr) return;
    auto read = std::make_shared<Members>();
    auto work = [read, coupleId](Store& store) -> StoreResult<void> {
        auto members = store.members(coupleId);
        if (!members) return std::unexpected(std::move(members.error()));
        *read = std::move(*members);
        return {};
    };
    store_.submit(std::move(work),
                  [this, alive = std::weak_ptr{alive_}, read, coupleId, readAs = ++reads_](StoreResult<void> done) {
                      if (alive.expired()) return;
                      auto* hosted = find(coupleId);
                      if (hosted == nullptr) return;
                      // A device that was let go must not stay because its room could not be told.
                      if (!done) {
                          drop(*hosted, done.error());
                          return;
                      }
                      takeMembers(coupleId, std::move(*read), readAs);
                  });
}

void RoomHost::takeMembers(const std::string& coupleId, Members members, std::uint64_t readAs) {
    take(host(coupleId), {.socket = {}, .what = Input::MembersRead{.members = std::move(members), .readAs = readAs}});
}

// Loading, and starting over

void RoomHost::load(Hosted& hosted) {
    hosted.isReady = false;
    hosted.readAs = ++reads_;
    auto record = std::make_shared<std::optional<RoomRecord>>();
    auto work = [record, coupleId = hosted.coupleId](Store& store) -> StoreResult<void> {
        auto room = store.loadRoom(coupleId);
        if (!room) return std::unexpected(std::move(room.error()));
        *record = std::move(*room);
        return {};
    };
    store_.submit(std::move(work), [this, place = hosted.weak_from_this(), generation = hosted.generation,
                                    record](StoreResult<void> done) {
        const auto alive = place.lock();
        if (!alive || alive->generation != generation) return;
        if (!done) {
            drop(*alive, done.error());
            return;
        }
        guarded(*alive, [&] { loaded(*alive, std::move(*record)); });
    });
}

void RoomHost::loaded(Hosted& hosted, std::optional<RoomRecord> record) {
    if (!record) {
        end(hosted, refusal); // the couple is gone
        return;
    }
    const auto presence = hosted.room ? hosted.room->lastPresence() : Room::LastPresence{};
    hosted.room.emplace(hosted.coupleId, std::move(*record));
    hosted.isReady = true;
    hosted.isCut = std::make_shared<bool>(false);
    if (hosted.taken) hosted.room->rememberBatch(*hosted.taken);
    hosted.taken.reset();
    std::vector<Room::Seat> seats;
    for (const auto& one : hosted.visitors) {
        if (one.isSeated) seats.push_back(one.seat);
    }
    const auto now = Wire::truncatedToMilliseconds(clock_.now());
    if (!seats.empty()) {
        dispatch(hosted, {.socket = {}, .what = Input::Resume{}}, hosted.room->resume(seats, presence, now));
    }
    for (auto& input : std::exchange(hosted.waiting, {})) run(hosted, std::move(input));
}

void RoomHost::reload(Hosted& hosted, CommitOutcome outcome) {
    const bool isDuplicate = outcome == CommitOutcome::duplicateBatch;
    log_.write(LogLevel::info, category,
               "room " + hosted.coupleId + " is read again: " + (isDuplicate ? "duplicate batch" : "version conflict"));
    ++figures_.reloads;
    ++hosted.generation;
    if (isDuplicate) hosted.taken = hosted.flights.front().batchId;
    for (auto& flight : std::exchange(hosted.flights, {})) {
        if (!std::holds_alternative<Input::Resume>(flight.input.what))
            hosted.waiting.push_back(std::move(flight.input));
    }
    if (mutant(Mutant::reloadForgetsInputs)) hosted.waiting.clear();
    load(hosted);
}

void RoomHost::drop(Hosted& hosted, const StoreError& error) {
    log_.write(LogLevel::error, category, "room " + hosted.coupleId + " is dropped: " + error.message);
    const auto close = [](SocketId socket) {
        return std::vector<RoomEffect>{
            {RoomEffect::Close{.socket = socket, .code = closeStoreFailed, .reason = "the store failed"}}};
    };
    end(hosted, close);
}

void RoomHost::end(Hosted& hosted, std::vector<RoomEffect> (*farewell)(SocketId)) {
    ++hosted.generation;
    for (const auto& one : std::vector{hosted.visitors}) {
        for (const auto& effect : farewell(one.id())) letOut(hosted, effect);
    }
    std::erase_if(whereabouts_, [&](const auto& entry) { return entry.second == &hosted; });
    rooms_.erase(rooms_.find(hosted.coupleId));
}

// One input after the other

// Half a step must not be built upon: a room for which there is no memory is let go, and comes back as it is stored.
template <class Step>
void RoomHost::guarded(Hosted& hosted, Step step) {
    const auto kept = hosted.shared_from_this();
    try {
        step();
    } catch (const std::bad_alloc&) {
        if (find(hosted.coupleId) == &hosted) drop(hosted, {.message = "there is no memory for it"});
    }
}

void RoomHost::take(Hosted& hosted, Input input) {
    guarded(hosted, [&] {
        if (hosted.isReady) {
            run(hosted, std::move(input));
        } else {
            hosted.waiting.push_back(std::move(input));
        }
    });
}

void RoomHost::run(Hosted& hosted, Input input) {
    const auto before = hosted.room->online();
    auto step = perform(hosted, input);
    storeGoodbyes(hosted, before);
    dispatch(hosted, std::move(input), std::move(step));
}

RoomStep RoomHost::perform(Hosted& hosted, Input& input) {
    auto& room = *hosted.room;
    const auto now = Wire::truncatedToMilliseconds(clock_.now());
    return std::visit(
        Overloaded{[&](const Input::Join& join) { return room.join(input.socket, join.token, now); },
                   [&](const Input::Frame& frame) { return room.receive(input.socket, frame.text, now, frame.pace); },
                   [&](const Input::Leave& /*input*/) { return room.leave(input.socket); },
                   [&](const Input::MembersRead& read) {
                       // What was read before the room was tells nothing new.
                       return read.readAs > hosted.readAs ? room.membersChanged(read.members) : RoomStep{};
                   },
                   [](const Input::Resume& /*input*/) { return RoomStep{}; }},
        input.what);
}

void RoomHost::storeGoodbyes(const Hosted& hosted, PartnerSet before) {
    const auto after = hosted.room->online();
    for (const auto slot : {PartnerID::a, PartnerID::b}) {
        if (!before.contains(slot) || after.contains(slot)) continue;
        auto work = [coupleId = hosted.coupleId, slot, at = Wire::truncatedToMilliseconds(clock_.now())](Store& store) {
            return store.setLastSeen(coupleId, slot, at);
        };
        store_.submit(std::move(work), [this, alive = std::weak_ptr{alive_}](const StoreResult<void>& done) {
            if (alive.expired() || done) return;
            log_.write(LogLevel::error, category, "a goodbye is not stored: " + done.error().message);
        });
    }
}

void RoomHost::dispatch(Hosted& hosted, Input input, RoomStep step) {
    const bool waits = step.commit.has_value();
    Flight flight{.input = std::move(input),
                  .effects = std::move(step.effects),
                  .tally = step.tally,
                  .batchId = waits ? step.commit->batchId : std::nullopt,
                  .isDurable = !waits};
    if (!waits && hosted.flights.empty()) {
        letOut(hosted, flight);
        return;
    }
    if (mutant(Mutant::effectsBeforeTheCommit)) {
        for (const auto& effect : std::exchange(flight.effects, {})) letOut(hosted, effect);
    }
    hosted.flights.push_back(std::move(flight));
    if (!waits) return;
    hosted.quietTicks = 0;
    submit(hosted, std::move(*step.commit));
}

void RoomHost::submit(Hosted& hosted, Commit commit) {
    auto outcome = std::make_shared<CommitOutcome>(CommitOutcome::versionConflict);
    auto work = [commit = std::move(commit), outcome, isCut = hosted.isCut](Store& store) -> StoreResult<void> {
        if (*isCut) return {};
        const auto done = store.commit(commit);
        if (!done) return std::unexpected(done.error());
        *isCut = *done != CommitOutcome::stored;
        *outcome = *done;
        return {};
    };
    store_.submit(
        std::move(work),
        [this, place = hosted.weak_from_this(), generation = hosted.generation,
         outcome](const StoreResult<void>& done) {
            const auto alive = place.lock();
            if (!alive || alive->generation != generation) return;
            guarded(*alive, [&] { settle(*alive, done, *outcome); });
        },
        [isCut = hosted.isCut] { *isCut = true; });
}

// Commits are reported in the order of the flights: this one is the first's.
void RoomHost::settle(Hosted& hosted, const StoreResult<void>& done, CommitOutcome outcome) {
    if (!done) {
        drop(hosted, done.error());
        return;
    }
    if (outcome != CommitOutcome::stored) {
        reload(hosted, outcome);
        return;
    }
    hosted.flights.front().isDurable = true;
    while (!hosted.flights.empty() && hosted.flights.front().isDurable) {
        auto flight = std::move(hosted.flights.front());
        hosted.flights.pop_front();
        letOut(hosted, flight);
    }
}

void RoomHost::letOut(Hosted& hosted, const Flight& flight) {
    figures_.batches += flight.tally.batches;
    figures_.duplicates += flight.tally.duplicates;
    figures_.rejectedOps += flight.tally.rejectedOps;
    figures_.unreadable += flight.tally.unreadable;
    for (const auto& effect : flight.effects) letOut(hosted, effect);
    noteProgress(hosted, flight.input);
}

void RoomHost::letOut(Hosted& hosted, const RoomEffect& effect) {
    std::visit(Overloaded{[&](const RoomEffect::Send& send) { sockets_.send(send.socket, send.text); },
                          [&](const RoomEffect::Close& close) {
                              sockets_.close(close.socket, close.code, close.reason);
                              hosted.remove(close.socket);
                              whereabouts_.erase(close.socket);
                          }},
               effect.value);
}

void RoomHost::noteProgress(Hosted& hosted, const Input& input) {
    auto* speaker = hosted.find(input.socket);
    if (speaker == nullptr) return;
    if (std::holds_alternative<Input::Join>(input.what)) speaker->isSeated = true;
    if (std::holds_alternative<Input::Leave>(input.what)) hosted.remove(input.socket);
    const auto* frame = std::get_if<Input::Frame>(&input.what);
    if (frame == nullptr) return;
    speaker->waitingFrames -= 1;
    speaker->waitingBytes -= frame->text.size();
    if (!speaker->isPaused || !speaker->hasRoomAgain()) return;
    speaker->isPaused = false;
    sockets_.resume(input.socket);
}

} // namespace lumaro
