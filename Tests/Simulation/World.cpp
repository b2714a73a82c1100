// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/World.h"

#include "LumaroCore/Support/EnumNames.h"
#include "Tests/Simulation/Hands.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {
namespace {

using samples::chance;
using samples::pick;
using samples::Random;

constexpr Seconds year{365.0 * 86400};

BoardItem foreignItem(std::uint64_t salt) {
    BoardItem item;
    item.id = samples::numberedId(salt);
    item.updatedAt = samples::noon;
    item.payload = samples::plainNote("from elsewhere");
    return item;
}

} // namespace

World::World(const Script& script, const MutantCase& mutant, bool isPrinted)
    : script_(script), trace_(time_, isPrinted), witness_(coverage_), randomness_(script.seed),
      store_(mutant.around, witness_, coverage_), network_(time_, script.seed, mutant.around, trace_, coverage_),
      server_({time_, network_, store_, randomness_, witness_, trace_, coverage_, mutant.around}),
      pairing_(time_, network_, server_, coverage_, devices_) {
    store_.remember(script.rememberedBatches);
    for (std::size_t i = 0; i < script.devices; ++i) {
        const auto person = i == 0 ? PartnerID::a : i == 1 ? PartnerID::b : script.thirdPerson;
        const auto kind = script.hasApplication[i] ? SimDevice::Kind::application : SimDevice::Kind::command;
        devices_.push_back(std::make_unique<SimDevice>(
            i, person, kind, SimDevice::Parts{time_, network_, server_, witness_, trace_, coverage_, mutant.around}));
    }
}

std::optional<std::string> World::run() {
    meet();
    for (const auto& step : script_.steps) {
        if (isFailed()) break;
        trace_.add("step", step.device, nameOf(step.deed));
        try {
            perform(step);
        } catch (const DeviceDied& died) {
            devices_[died.device]->bury();
        }
        housekeep();
        check();
        if (!isFailed()) advance(Seconds{step.afterMs / 1e3});
        check();
    }
    return witness_.complaint();
}

// The first day: nothing goes wrong yet.
void World::meet() {
    server_.start();
    pairing_.create(*devices_[0]);
    advance(Seconds{1});
    if (script_.secondJoinsByCode) pairing_.joinByCode(*devices_[1], *devices_[0]);
    const auto isMissing = [](const auto& device) { return device->needsToken(); };
    for (int i = 0; i < 20 && std::ranges::any_of(devices_, isMissing); ++i) {
        advance(Seconds{1});
        housekeep();
    }
    if (script_.devices > 2) coverage_.note(Met::thirdDevices);
    if (script_.hasApplication[0] && script_.hasApplication[1]) coverage_.note(Met::twoApplications);
    check();
}

// Time

void World::advance(Seconds span) {
    const auto end = time_.now() + std::chrono::round<ManualSleeper::Time>(span);
    while (time_.now() < end && !isFailed()) {
        try {
            time_.advanceTo(end);
        } catch (const DeviceDied& died) {
            devices_[died.device]->bury();
        }
    }
}

void World::housekeep() {
    for (auto& device : devices_) {
        if (device->needsToken() && !pairing_.isBusy()) pairing_.joinByLink(*device);
    }
}

void World::check() {
    for (auto& device : devices_) device->check();
}

// What happens

void World::perform(const Step& step) {
    auto& device = *devices_[step.device % devices_.size()];
    switch (step.deed) {
    case Deed::killServer:
    case Deed::killServerAt:
    case Deed::startServer:
    case Deed::slowStore:
    case Deed::failStore:
    case Deed::foreignCommit:
    case Deed::sweep:
    case Deed::setServerClock: return performOnServer(step);
    case Deed::yearAway: return stayAway(device);
    case Deed::calm: return calm();
    default: return performOnDevice(device, step);
    }
}

void World::performOnDevice(SimDevice& device, const Step& step) {
    switch (step.deed) {
    case Deed::kill:
        if (device.program() != nullptr) coverage_.note(Met::deviceKills);
        return device.stop();
    case Deed::killAtCall: return device.disk().killAt(step.amount);
    case Deed::losePower: return device.losePower(static_cast<std::size_t>(step.amount));
    case Deed::start: return device.start();
    case Deed::fillDisk: return device.disk().fill(step.amount);
    case Deed::ailDisk:
        return device.disk().ail(step.salt % 4 < 2 ? SimDisk::Ailing::everything : SimDisk::Ailing::reading,
                                 step.salt % 2 == 0 ? FileFault::inOut : FileFault::interrupted, step.amount);
    case Deed::setClock:
        coverage_.note(Met::clockJumps);
        device.clock().skew = std::chrono::minutes{step.amount};
        if (auto* program = device.program()) program->wake();
        return;
    case Deed::quit: return device.quit();
    case Deed::leave: return pairing_.leave(device);
    case Deed::releasePartner: return pairing_.releasePartner(device);
    case Deed::weather: {
        auto& weather = network_.weather(device.index());
        weather.reach = static_cast<Weather::Reach>(step.amount <= 2 ? step.amount : 0);
        weather.slowestMs = weather.fastestMs + (step.amount <= 2 ? 35 : step.amount);
        return;
    }
    case Deed::cut: return cut(device, step);
    default:
        if (auto* program = device.program()) use(*program, device, step);
    }
}

void World::cut(SimDevice& device, const Step& step) {
    Random random{step.salt};
    network_.cut(device.index(), static_cast<Notice>(step.amount), random);
}

void World::use(SimProgram& program, SimDevice& device, const Step& step) {
    Random random{step.salt};
    auto* client = program.client();
    if (step.deed == Deed::reconnect) return program.reconnect();
    if (client == nullptr) return;
    Hands hands{program.board().shown(), {program.slot(), device.clock().now()}, device.ids(), random};
    switch (step.deed) {
    case Deed::act: return program.handle(random);
    case Deed::bigAct: return program.act(hands.everythingMoved(static_cast<std::size_t>(step.amount)));
    case Deed::wildAct: return program.act(hands.wildOps(static_cast<std::size_t>(step.amount)));
    case Deed::fillBoard: return program.act(hands.fullBoard(static_cast<std::size_t>(step.amount)));
    case Deed::takeBack: return program.takeBack(random);
    case Deed::presence: return program.sendPresence();
    case Deed::music: return program.changeMusic(random);
    case Deed::place: return program.changePlace(random);
    case Deed::retryNow:
        if (std::holds_alternative<ConnectionState::Waiting>(client->connectionState().value)) {
            coverage_.note(Met::retriesAtOnce);
        }
        return program.retryNow();
    default: return;
    }
}

void World::performOnServer(const Step& step) {
    Random random{step.salt};
    auto* queue = server_.queue();
    switch (step.deed) {
    case Deed::killServer: return server_.kill(step.amount == 0 ? Notice::both : Notice::nobody, random);
    case Deed::killServerAt:
        return server_.killAt(static_cast<KillPoint>(step.amount), chance(random, 0.7) ? Notice::both : Notice::nobody,
                              step.salt);
    case Deed::startServer: return server_.start();
    case Deed::slowStore:
        if (queue != nullptr) queue->setPace(Seconds{step.amount / 1e3});
        return;
    case Deed::failStore:
        if (queue != nullptr) queue->failNext(step.amount);
        return;
    case Deed::foreignCommit: return commitElsewhere(step);
    case Deed::sweep:
        coverage_.note(Met::sweeps);
        return server_.submit([now = server_.clock().now()](Store& store) -> StoreResult<void> {
            const auto swept = store.sweep(now);
            return swept ? StoreResult<void>{} : std::unexpected(swept.error());
        });
    case Deed::setServerClock: server_.clock().skew = std::chrono::minutes{step.amount}; return;
    default: return;
    }
}

// As if another node held the room too: this one learns of it when its next commit is refused.
void World::commitElsewhere(const Step& step) {
    isForeign_ = true;
    coverage_.note(Met::foreignCommits);
    server_.submit([this, step](Store& store) -> StoreResult<void> {
        const auto loaded = store.loadRoom(pairing_.coupleId());
        if (!loaded || !*loaded) return {};
        const auto& [board, version, batches, members] = **loaded;
        Commit commit{.coupleId = pairing_.coupleId(),
                      .expectedVersion = version,
                      .batchId = {},
                      .at = server_.clock().now(),
                      .change = {}};
        commit.change.background = static_cast<BackgroundID>(step.salt % 6);
        commit.change.threadTiedAt = board.threadTiedAt;
        commit.change.updatedAt = board.updatedAt;
        // A new item, so that a node that does not read the room again shows another board.
        if (board.items.size() < BoardSpec::maxLiveItems) commit.change.upserted.push_back(foreignItem(step.salt));
        const auto stored = store.commit(commit);
        return stored ? StoreResult<void>{} : std::unexpected(stored.error());
    });
}

// Everyone sleeps while the year goes by; the others wake, and this device stays away until it is started.
void World::stayAway(SimDevice& away) {
    coverage_.note(Met::yearsAway);
    Random random{script_.seed};
    for (auto& device : devices_) device->stop();
    server_.kill(Notice::both, random);
    advance(Seconds{120});
    advance(year);
    server_.start();
    for (auto& device : devices_) {
        if (device.get() != &away) device->start();
    }
}

} // namespace lumaro::simulation
