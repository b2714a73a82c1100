// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Edits.h"
#include "Tests/Simulation/World.h"

#include <algorithm>

namespace lumaro::simulation {
namespace {

constexpr Seconds longestBackoff{60};
/// Until a device leaves a line that says nothing, or gives up on one that does not open.
constexpr Seconds longestSilence{60};
/// To join again with a new token, and to send what waits.
constexpr Seconds grace{20};
/// Until the room has closed the sockets of those who are gone.
constexpr Seconds longestGhost{120};

std::string named(const SimDevice& device) {
    return "device " + std::to_string(device.index());
}

bool isSameOnScreen(const Board& one, const Board& other) {
    return one.background == other.background && one.threadTiedAt == other.threadTiedAt && one.items == other.items;
}

} // namespace

std::optional<RoomRecord> World::room() {
    return store_.loadRoom(desk_.coupleId()).value_or(std::nullopt);
}

// The faults are over: everyone runs, and whoever has lost a token may ask for a new one.
void World::heal() {
    for (auto& device : devices_) {
        network_.weather(device->index()) = Weather{};
        device->disk().heal();
    }
    server_.start();
    server_.queue()->heal();
}

// Once the faults are over, all are in step within the longest back-off, counted from when a device knows that its line
// is gone.
void World::calm() {
    heal();
    coverage_.note(Met::calms);
    const auto begin = time_.now();
    const bool knows = !network_.hasUnnoticedCut() &&
                       std::ranges::none_of(devices_, [](const auto& device) { return device->waitsForAnAnswer(); });
    const Seconds limit = longestBackoff + (knows ? Seconds{0} : longestSilence) + grace;
    while (!isFailed() && (isForeign_ || !areInStep())) {
        if (Seconds{time_.now() - begin} > limit) return checkAtRest();
        for (auto& device : devices_) {
            device->start();
            if (auto* session = device->session()) session->client().connect();
        }
        touchAfterForeignCommits();
        housekeep();
        advance(Seconds{1});
        check();
    }
    checkAtRest();
    const auto settled = time_.now();
    while (!isFailed() && !areRostersRight()) {
        if (Seconds{time_.now() - settled} > longestGhost) return witness_.complain("a roster is not right at rest");
        advance(Seconds{5});
        housekeep();
    }
}

// A room learns of another node's commits by its own next one.
void World::touchAfterForeignCommits() {
    if (!isForeign_ || devices_[0]->session() == nullptr) return;
    isForeign_ = false;
    devices_[0]->act(Edits::setBackground(BackgroundID::oat));
}

bool World::areInStep() {
    const auto record = room();
    return record && std::ranges::all_of(devices_, [&](const auto& device) {
               auto* session = device->session();
               return session != nullptr && session->client().isConnected() && session->client().pendingCount() == 0 &&
                      isSameOnScreen(session->board().shown(), record->board);
           });
}

void World::checkAtRest() {
    const auto record = room();
    if (!record) return witness_.complain("the couple is gone");
    for (auto& device : devices_) {
        auto* session = device->session();
        if (session == nullptr) {
            witness_.complain(named(*device) + " did not come back");
        } else if (!session->client().isConnected()) {
            witness_.complain(named(*device) + " is not connected within the longest back-off");
        } else if (session->client().pendingCount() != 0) {
            witness_.complain(named(*device) + " still has batches waiting at rest");
        } else if (!isSameOnScreen(session->board().shown(), record->board)) {
            witness_.complain(named(*device) + " shows another board than the room's at rest");
        } else if (witness_.unstored(device->index()) != 0) {
            witness_.complain(named(*device) + " has accepted what is not in the store at rest");
        }
    }
}

bool World::areRostersRight() {
    const auto members = room().value_or(RoomRecord{}).members;
    return std::ranges::all_of(devices_, [&](const auto& device) {
        auto* session = device->session();
        return session != nullptr && session->client().isConnected() && session->online() == members.paired() &&
               session->paired() == members.paired() && session->names() == members.names;
    });
}

} // namespace lumaro::simulation
