// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/Simulation.h"

#include "LumaroCore/Support/EnumNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

namespace lumaro::simulation {

// What GoogleTest shows of a case.
void PrintTo(const MutantCase& mutant, std::ostream* out) {
    *out << mutant.breaks;
}

namespace {

// Sanitizers make a run many times slower.
constexpr std::uint64_t cleanSeeds = LUMARO_SIMULATED_SEEDS;
constexpr std::uint64_t mutantSeeds = 10000;

TEST(SimulationTest, NothingIsLostAndAllSeeTheSame) {
    const auto suite = runSeeds(1, 1 + cleanSeeds, 1);
    if (suite.failingSeed) FAIL() << explain(*suite.failingSeed, {});
    // A suite in which some fault, conflict or recovery never happened would have shown nothing about it.
    for (std::size_t i = 0; i < static_cast<std::size_t>(Met::count); ++i) {
        EXPECT_GT(suite.coverage.of(static_cast<Met>(i)), 0U) << nameOf(static_cast<Met>(i));
    }
    EXPECT_GE(suite.coverage.of(Met::twoApplications), 500U);
}

TEST(SimulationTest, OneSeedGoesOneWay) {
    const auto first = runSeeds(1, 30, 1);
    EXPECT_EQ(runSeeds(1, 30, 1).traceHash, first.traceHash);
    EXPECT_NE(runSeeds(2, 31, 1).traceHash, first.traceHash);
}

TEST(SimulationTest, AFailureIsToldByItsShortestScript) {
    const auto& mutant = *findMutant("welcome-wipes-pending");
    const auto seed = runSeeds(1, mutantSeeds, 1, mutant).failingSeed;
    ASSERT_TRUE(seed);
    const auto whole = scriptOf(*seed);
    const auto shorter = shortest(whole, mutant);
    EXPECT_LT(shorter.steps.size(), whole.steps.size());
    EXPECT_TRUE(runScript(shorter, mutant).complaint);
    EXPECT_FALSE(runScript(shorter).complaint);
}

class MutantTest : public testing::TestWithParam<MutantCase> {};

TEST_P(MutantTest, IsFound) {
    const auto suite = runSeeds(1, 1 + mutantSeeds, 1, GetParam());
    ASSERT_TRUE(suite.failingSeed) << GetParam().breaks;
    RecordProperty("seed", std::to_string(*suite.failingSeed));
    EXPECT_FALSE(runScript(scriptOf(*suite.failingSeed)).complaint) << "the fault is not the mutant's";
}

std::string testName(const testing::TestParamInfo<MutantCase>& info) {
    std::string name{info.param.name};
    std::ranges::replace(name, '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Simulation, MutantTest, testing::ValuesIn(allMutants().begin(), allMutants().end()), testName);

} // namespace
} // namespace lumaro::simulation
