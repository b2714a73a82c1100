// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/Location/LocationWatcher.h"
#include "Tests/Simulation/World.h"

#include <algorithm>
#include <map>
#include <vector>

namespace lumaro::simulation {
namespace {

constexpr Seconds longestBackoff{60};
/// How long until a device drops a silent line, or gives up one that does not open.
constexpr Seconds longestSilence{60};
/// How long it may take to join again with a new token and to send what waits.
constexpr Seconds grace{20};
/// How long until every note with a time to come down has come down.
constexpr Seconds longestNote{95};
/// How long until the room has closed the sockets of devices that are gone.
constexpr Seconds longestGhost{120};

std::string named(const SimDevice& device) {
    return "device " + std::to_string(device.index());
}

bool isSameOnScreen(const Board& one, const Board& other) {
    return one.background == other.background && one.threadTiedAt == other.threadTiedAt && one.items == other.items;
}

} // namespace

std::optional<RoomRecord> World::room() {
    return store_.loadRoom(pairing_.coupleId()).value_or(std::nullopt);
}

// Ends all faults of networks, disks and the store, and starts the server.
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
    const bool knows = !network_.hasUnnoticedCut() && std::ranges::none_of(devices_, [](const auto& device) {
        return device->program() != nullptr && device->program()->waitsForAnAnswer();
    });
    const Seconds limit = longestBackoff + (knows ? Seconds{0} : longestSilence) + grace;
    while (!isFailed() && (isForeign_ || !areInStep())) {
        if (Seconds{time_.now() - begin} > limit) return checkAtRest();
        for (auto& device : devices_) {
            device->start();
            auto* program = device->program();
            if (program == nullptr) continue;
            auto* client = program->client();
            client == nullptr ? program->reconnect() : client->connect();
        }
        touchAfterForeignCommits();
        housekeep();
        advance(Seconds{1});
        check();
    }
    checkAtRest();
    letTimeTakeDown();
    const auto settled = time_.now();
    while (!isFailed() && !areRostersRight()) {
        if (Seconds{time_.now() - settled} > longestGhost) return witness_.complain("a roster is not right at rest");
        advance(Seconds{5});
        housekeep();
    }
    advance(Seconds{5});
    if (!isFailed()) checkSongs();
    if (!isFailed()) checkPlaces();
}

// Of a slot with one device it is known what its person shares; two may say different things.
void World::checkSongs() {
    std::map<PartnerID, std::vector<SimProgram*>> programs;
    for (auto& device : devices_) programs[device->program()->slot()].push_back(device->program());
    for (auto& device : devices_) {
        const auto& partner = programs[other(device->program()->slot())];
        if (partner.size() != 1 || !partner.front()->hasLiveCards() || !device->program()->hasLiveCards()) continue;
        const auto& them = *partner.front();
        const auto shared = them.sharesMusic() ? them.song() : std::nullopt;
        if (shared) coverage_.note(Met::songsShown);
        if (them.song() && !shared) coverage_.note(Met::songsKeptToOneself);
        if (device->program()->partnersSong() == shared) continue;
        witness_.complain(named(*device) + (shared ? " shows another song than its partner plays"
                                                   : " shows a song that its partner does not share"));
    }
}

// Whoever shares their place has looked for it once more by then.
void World::checkPlaces() {
    advance(LocationWatcher::Settings{}.refreshInterval + Seconds{5});
    if (isFailed()) return;
    std::map<PartnerID, std::vector<SimProgram*>> programs;
    for (auto& device : devices_) {
        programs[device->program()->slot()].push_back(device->program());
        const auto fault = device->program()->faultOfPlace();
        if (!fault.empty()) return witness_.complain(named(*device) + " " + fault);
    }
    for (auto& device : devices_) {
        const auto& partner = programs[other(device->program()->slot())];
        if (partner.size() != 1 || !partner.front()->hasLiveCards() || !device->program()->hasLiveCards()) continue;
        const auto shared = partner.front()->place();
        coverage_.note(shared ? Met::placesShown : Met::placesKeptToOneself);
        if (device->program()->partnersPlace() == shared) continue;
        witness_.complain(named(*device) + (shared ? " shows its partner at another place than they tell of"
                                                   : " shows a place that its partner does not share"));
    }
}

// Lets time pass without an act, until all notes whose time is over have come down.
void World::letTimeTakeDown() {
    advance(longestNote);
    for (auto& device : devices_) device->checkAtRest();
}

// A room learns of another node's commits by its own next one.
void World::touchAfterForeignCommits() {
    auto* program = devices_[0]->program();
    if (!isForeign_ || program == nullptr || program->client() == nullptr) return;
    isForeign_ = false;
    program->act(Edits::setBackground(BackgroundID::oat));
}

bool World::areInStep() {
    const auto record = room();
    return record && std::ranges::all_of(devices_, [&](const auto& device) {
               auto* program = device->program();
               auto* client = program == nullptr ? nullptr : program->client();
               return client != nullptr && client->isConnected() && client->pendingCount() == 0 &&
                      isSameOnScreen(program->board().shown(), record->board);
           });
}

void World::checkAtRest() {
    const auto record = room();
    if (!record) return witness_.complain("the couple is gone");
    for (auto& device : devices_) {
        auto* program = device->program();
        auto* client = program == nullptr ? nullptr : program->client();
        if (client == nullptr) {
            witness_.complain(named(*device) + " did not come back");
        } else if (!client->isConnected()) {
            witness_.complain(named(*device) + " is not connected within the longest back-off");
        } else if (client->pendingCount() != 0) {
            witness_.complain(named(*device) + " still has batches waiting at rest");
        } else if (!isSameOnScreen(program->board().shown(), record->board)) {
            witness_.complain(named(*device) + " shows another board than the room's at rest");
        } else if (witness_.unstored(device->index()) != 0) {
            witness_.complain(named(*device) + " has accepted what is not in the store at rest");
        }
    }
}

bool World::areRostersRight() {
    const auto members = room().value_or(RoomRecord{}).members;
    return std::ranges::all_of(devices_, [&](const auto& device) {
        auto* program = device->program();
        auto* client = program == nullptr ? nullptr : program->client();
        return client != nullptr && client->isConnected() && program->knows(members);
    });
}

} // namespace lumaro::simulation
