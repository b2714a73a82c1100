// SPDX-License-Identifier: Apache-2.0
#include "LumaroCore/Support/EnumNames.h"
#include "Tests/Simulation/Simulation.h"

#include <CLI/CLI.hpp>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <type_traits>
#include <vector>

namespace lumaro::simulation {
namespace {

static_assert(std::is_trivially_copyable_v<SuiteResult>, "a worker's result goes through a pipe as it is");

struct Options {
    std::uint64_t seeds = 1000;
    std::uint64_t from = 1;
    unsigned jobs = 1;
    std::string mutant;
    bool isTraced = false;
    bool listsMutants = false;
};

/// Runs every `jobs`-th seed in a process of its own; answers with the end of the pipe that its result comes through.
int startWorker(const Options& options, unsigned number, const MutantCase& mutant) {
    int ends[2] = {};
    if (pipe(ends) != 0) std::abort();
    const auto child = fork();
    if (child < 0) std::abort();
    if (child > 0) {
        close(ends[1]);
        return ends[0];
    }
    const auto result = runSeeds(options.from + number, options.from + options.seeds, options.jobs, mutant);
    const bool isWritten = write(ends[1], &result, sizeof result) == static_cast<ssize_t>(sizeof result);
    _exit(isWritten ? 0 : 1);
}

SuiteResult runAll(const Options& options, const MutantCase& mutant) {
    std::vector<int> workers;
    for (unsigned number = 0; number < options.jobs; ++number) workers.push_back(startWorker(options, number, mutant));
    SuiteResult all;
    for (const int worker : workers) {
        SuiteResult part;
        if (read(worker, &part, sizeof part) != static_cast<ssize_t>(sizeof part)) {
            std::fprintf(stderr, "a worker ended before its seeds did\n");
            std::exit(2);
        }
        close(worker);
        all.add(part);
    }
    while (wait(nullptr) > 0) {
    }
    return all;
}

void printCoverage(const Coverage& coverage) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(Met::count); ++i) {
        const auto met = static_cast<Met>(i);
        const auto name = nameOf(met);
        std::printf("%12llu  %.*s\n", static_cast<unsigned long long>(coverage.of(met)), static_cast<int>(name.size()),
                    name.data());
    }
}

int run(const Options& options, const MutantCase& mutant) {
    if (options.isTraced) {
        const auto result = runScript(scriptOf(options.from), mutant, true);
        std::printf("trace %016llx: %s\n", static_cast<unsigned long long>(result.traceHash),
                    result.complaint.value_or("clean").c_str());
        return result.complaint ? 1 : 0;
    }
    const auto begin = std::chrono::steady_clock::now();
    const auto suite = runAll(options, mutant);
    const std::chrono::duration<double> span = std::chrono::steady_clock::now() - begin;
    printCoverage(suite.coverage);
    std::printf("%llu seeds in %.1f s, %.0f a second, trace %016llx\n", static_cast<unsigned long long>(suite.seeds),
                span.count(), static_cast<double>(suite.seeds) / span.count(),
                static_cast<unsigned long long>(suite.traceHash));
    if (suite.failingSeed) std::printf("%s", explain(*suite.failingSeed, mutant).c_str());
    return suite.failingSeed ? 1 : 0;
}

} // namespace
} // namespace lumaro::simulation

int main(int argc, char** argv) {
    using namespace lumaro::simulation;
    Options options;
    CLI::App app{"Two people's devices, their room and all that goes wrong between them, from seeds"};
    app.add_option("--seeds", options.seeds, "how many")->capture_default_str();
    app.add_option("--from", options.from, "the first")->capture_default_str();
    app.add_option("--jobs", options.jobs, "processes")->capture_default_str()->check(CLI::Range(1U, 64U));
    app.add_option("--mutant", options.mutant, "with this fault planted");
    app.add_flag("--mutants", options.listsMutants, "list the faults that can be planted");
    app.add_flag("--trace", options.isTraced, "print what happens in the first seed");
    CLI11_PARSE(app, argc, argv);
    if (options.listsMutants) {
        for (const auto& mutant : allMutants()) {
            std::printf("%-28.*s %.*s\n", static_cast<int>(mutant.name.size()), mutant.name.data(),
                        static_cast<int>(mutant.breaks.size()), mutant.breaks.data());
        }
        return 0;
    }
    const auto* mutant = findMutant(options.mutant);
    if (mutant == nullptr && !options.mutant.empty()) {
        std::fprintf(stderr, "no mutant is called %s\n", options.mutant.c_str());
        return 2;
    }
    return run(options, mutant == nullptr ? MutantCase{} : *mutant);
}
