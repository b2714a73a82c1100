// SPDX-License-Identifier: Apache-2.0
// Naming positions and finding towns by the table that lies in the program, and how much of it comes into memory by
// that.
#include "Data/Places/PlacesData.h"
#include "LumaroCore/Places/PlaceTable.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace lumaro {
namespace {

constexpr std::size_t pointCount = 2'000;

// Points within some 35 km of places drawn by lot, so that most lie where places are close together.
std::vector<Coordinates> populatedPoints() {
    const auto parts = PlaceFormat::read(placesData()).value();
    std::mt19937_64 random{3};
    std::uniform_int_distribution<std::uint32_t> places{0, parts.records.size() - 1};
    std::uniform_real_distribution<double> away{-0.25, 0.25};
    std::vector<Coordinates> points;
    while (points.size() < pointCount) {
        const auto [latitude, longitude] = parts.records[places(random)].position();
        points.push_back({latitude + away(random), longitude + away(random)});
    }
    return points;
}

// What this process holds of the table, as Linux says for the program's mapping that it lies in; 0 elsewhere.
double residentMebibytes() {
    std::FILE* const file = std::fopen("/proc/self/smaps", "re");
    if (file == nullptr) return 0;
    const auto address = reinterpret_cast<std::uintptr_t>(placesData().data());
    double kibibytes = 0;
    bool isTheMapping = false;
    std::array<char, 512> line{};
    while (std::fgets(line.data(), line.size(), file) != nullptr) {
        std::uintptr_t start = 0;
        std::uintptr_t end = 0;
        double value = 0;
        if (std::sscanf(line.data(), "%zx-%zx ", &start, &end) == 2) isTheMapping = start <= address && address < end;
        if (isTheMapping && std::sscanf(line.data(), "Rss: %lf", &value) == 1) kibibytes = value;
    }
    std::fclose(file);
    return kibibytes / 1024;
}

void namePlaces(benchmark::State& state) {
    const auto points = populatedPoints();
    const auto table = PlaceTable::open(placesData()).value();
    std::vector<double> times;
    for ([[maybe_unused]] auto _ : state) {
        for (const auto point : points) {
            const auto start = std::chrono::steady_clock::now();
            benchmark::DoNotOptimize(table.factsAt(point));
            times.push_back(
                std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
        }
    }
    std::ranges::sort(times);
    state.counters["p50_us"] = times[times.size() / 2];
    state.counters["p99_us"] = times[times.size() * 99 / 100];
    state.counters["most_us"] = times.back();
    state.counters["mapping_MiB"] = residentMebibytes();
}

void findTowns(benchmark::State& state, const char* typed) {
    const auto table = PlaceTable::open(placesData()).value();
    std::size_t found = 0;
    for ([[maybe_unused]] auto _ : state) found = table.find(typed, 8).size();
    state.counters["found"] = static_cast<double>(found);
}

void openTable(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(PlaceTable::open(placesData()));
    state.counters["table_MiB"] = static_cast<double>(placesData().size()) / (1024.0 * 1024.0);
}

BENCHMARK(openTable)->Unit(benchmark::kMicrosecond);
BENCHMARK(namePlaces)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(findTowns, one_letter, "s")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(findTowns, two_letters, "sa")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(findTowns, four_letters, "sant")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace lumaro
