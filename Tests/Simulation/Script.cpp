// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Script.h"

#include "LumaroCore/Support/EnumNames.h"
#include "Samples/Samples.h"

#include <algorithm>
#include <numeric>

namespace lumaro::simulation {
namespace {

using samples::chance;
using samples::pick;
using samples::Random;

using Weights = std::array<int, static_cast<std::size_t>(Deed::count)>;

// How often each deed comes, in the order of `Deed`.
constexpr Weights usual{260, 6,  40, 4, 30, 10, 24, 24, 30, 45, 18, 24, 16, 80, 8, 14,
                        12,  12, 8,  8, 4,  3,  1,  10, 22, 60, 12, 6,  8,  4,  4, 2};

// In each run some deeds come often, and some never.
Weights weightsFor(Random& random) {
    static constexpr std::array factors{0, 1, 1, 1, 3};
    Weights weights = usual;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const auto deed = static_cast<Deed>(i);
        const bool isAlways = deed == Deed::act || deed == Deed::start || deed == Deed::startServer;
        if (!isAlways) weights[i] *= factors[pick(random, std::size_t{0}, factors.size() - 1)];
    }
    return weights;
}

Deed drawn(const Weights& weights, Random& random) {
    int place = pick(random, 0, std::reduce(weights.begin(), weights.end()) - 1);
    std::size_t i = 0;
    for (; place >= weights[i]; ++i) place -= weights[i];
    return static_cast<Deed>(i);
}

int amountFor(Deed deed, Random& random) {
    switch (deed) {
    case Deed::bigAct: return pick(random, 2, 4);
    case Deed::wildAct: return pick(random, 1, 6);
    case Deed::fillBoard: return pick(random, 50, 70);
    case Deed::weather: return chance(random, 0.5) ? pick(random, 1, 2) : pick(random, 3, 4000);
    case Deed::cut: return chance(random, 0.5) ? 0 : pick(random, 1, 3);
    case Deed::killAtCall: return pick(random, 1, 9);
    case Deed::losePower: return chance(random, 0.5) ? 0 : pick(random, 1, 400);
    case Deed::fillDisk: return pick(random, 1, 3);
    case Deed::ailDisk: return pick(random, 1, 6);
    case Deed::setClock: return pick(random, -600, 600);
    case Deed::killServer: return pick(random, 0, 1);
    case Deed::killServerAt: return pick(random, 1, 3);
    case Deed::slowStore: return chance(random, 0.5) ? 1 : pick(random, 1, 400);
    case Deed::failStore: return pick(random, 1, 2);
    case Deed::setServerClock: return pick(random, -600, 600);
    default: return 0;
    }
}

int pauseAfter(Deed deed, Random& random) {
    const int choice = pick(random, 0, 99);
    // Mostly short, so that faults come while something is under way.
    if (choice < 55 || (deed == Deed::act && choice < 75)) return pick(random, 0, 40);
    if (choice < 85) return pick(random, 40, 500);
    if (choice < 97) return pick(random, 500, 8000);
    return pick(random, 8000, 130000);
}

bool isOncePerRun(Deed deed) {
    // Two years away are more than batches are remembered for.
    return deed == Deed::yearAway || deed == Deed::calm;
}

} // namespace

Script scriptOf(std::uint64_t seed) {
    Random random{seed};
    Script script;
    script.seed = seed;
    script.devices = pick(random, std::size_t{2}, std::size_t{3});
    script.thirdPerson = chance(random, 0.5) ? PartnerID::a : PartnerID::b;
    for (auto& has : script.hasApplication) has = chance(random, 0.8);
    script.secondJoinsByCode = chance(random, 0.5);
    script.rememberedBatches = chance(random, 0.5) ? std::size_t{256} : pick(random, std::size_t{0}, std::size_t{4});
    auto weights = weightsFor(random);
    for (int left = pick(random, 40, 140); left > 0; --left) {
        const auto deed = drawn(weights, random);
        if (isOncePerRun(deed)) weights[static_cast<std::size_t>(deed)] = 0;
        script.steps.push_back({.deed = deed,
                                .device = pick(random, std::size_t{0}, script.devices - 1),
                                .amount = amountFor(deed, random),
                                .salt = random(),
                                .afterMs = pauseAfter(deed, random)});
    }
    script.steps.push_back({.deed = Deed::calm});
    return script;
}

std::string describe(const Step& step) {
    auto text = "device " + std::to_string(step.device) + " " + std::string{nameOf(step.deed)};
    if (step.amount != 0) text += ": " + std::to_string(step.amount);
    return text + ", then " + std::to_string(step.afterMs) + " ms  (salt " + std::to_string(step.salt) + ")";
}

} // namespace lumaro::simulation
