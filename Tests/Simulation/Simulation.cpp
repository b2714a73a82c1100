// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Simulation.h"

#include "Tests/Simulation/World.h"

#include <algorithm>
#include <utility>

namespace lumaro::simulation {

RunResult runScript(const Script& script, const MutantCase& mutant, bool isPrinted) {
    activeMutant = mutant.inCode;
    RunResult result;
    {
        World world{script, mutant, isPrinted};
        result.complaint = world.run();
        result.traceHash = world.traceHash();
        result.coverage = world.coverage();
    }
    activeMutant = Mutant::none;
    return result;
}

// Takes out ever smaller runs of steps, as long as what is left still fails.
Script shortest(Script script, const MutantCase& mutant) {
    for (auto size = script.steps.size() / 2; size > 0; size = size == 1 ? 0 : size / 2) {
        for (std::size_t begin = 0; begin < script.steps.size();) {
            auto shorter = script;
            const auto first = shorter.steps.begin() + static_cast<std::ptrdiff_t>(begin);
            const auto left = shorter.steps.size() - begin;
            shorter.steps.erase(first, first + static_cast<std::ptrdiff_t>(std::min(size, left)));
            if (runScript(shorter, mutant).complaint) {
                script = std::move(shorter);
            } else {
                begin += size;
            }
        }
    }
    return script;
}

void SuiteResult::add(const SuiteResult& other) {
    seeds += other.seeds;
    traceHash += other.traceHash;
    coverage.add(other.coverage);
    if (other.failingSeed) failingSeed = std::min(failingSeed.value_or(*other.failingSeed), *other.failingSeed);
}

SuiteResult runSeeds(std::uint64_t from, std::uint64_t end, std::uint64_t stride, const MutantCase& mutant) {
    SuiteResult suite;
    for (auto seed = from; seed < end && !suite.failingSeed; seed += stride) {
        const auto run = runScript(scriptOf(seed), mutant);
        ++suite.seeds;
        suite.traceHash += run.traceHash;
        suite.coverage.add(run.coverage);
        if (run.complaint) suite.failingSeed = seed;
    }
    return suite;
}

std::string explain(std::uint64_t seed, const MutantCase& mutant) {
    const auto script = scriptOf(seed);
    const auto run = runScript(script, mutant);
    auto text = "seed " + std::to_string(seed) + ": " + run.complaint.value_or("clean") + "\n";
    if (!run.complaint) return text;
    const auto shorter = shortest(script, mutant);
    text += "shortest script, " + std::to_string(shorter.steps.size()) + " of " + std::to_string(script.steps.size()) +
            " steps, with " + std::to_string(shorter.devices) +
            " devices: " + runScript(shorter, mutant).complaint.value_or("clean") + "\n";
    for (const auto& step : shorter.steps) text += "  " + describe(step) + "\n";
    return text;
}

} // namespace lumaro::simulation
