// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Simulation/Coverage.h"
#include "Tests/Simulation/Mutants.h"
#include "Tests/Simulation/Script.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumaro::simulation {

struct RunResult {
    std::optional<std::string> complaint; ///< what was wrong, if anything
    std::uint64_t traceHash = 0;
    Coverage coverage;
};

/// One script from its beginning to its end, the same every time.
RunResult runScript(const Script& script, const MutantCase& mutant = {}, bool isPrinted = false);

/// The script without the steps that its failure does not need.
Script shortest(Script script, const MutantCase& mutant);

/// What many seeds add up to.
struct SuiteResult {
    std::uint64_t seeds = 0;
    std::optional<std::uint64_t> failingSeed; ///< the least of those that failed
    std::uint64_t traceHash = 0;              ///< whatever the order of the seeds
    Coverage coverage;

    void add(const SuiteResult& other);
};

/// The seeds `from`, `from + stride`, ... below `end`, up to the first that fails.
SuiteResult runSeeds(std::uint64_t from, std::uint64_t end, std::uint64_t stride, const MutantCase& mutant = {});

/// The failing seed, what it complains of and its shortest script, for people.
std::string explain(std::uint64_t seed, const MutantCase& mutant);

} // namespace lumaro::simulation
