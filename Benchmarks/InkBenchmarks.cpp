// SPDX-License-Identifier: Apache-2.0
// A line under the pen: what each frame of it costs, and what it takes in a doodle.
#include "LumaroCore/Geometry/InkEraser.h"
#include "LumaroCore/Geometry/InkSmoothing.h"
#include "LumaroCore/Support/Wire.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace lumaro {
namespace {

/// As long as so many samples of a pen that writes waves at 125 samples a second, now fast and now slow.
std::vector<PenSample> waves(std::size_t count) {
    std::vector<PenSample> samples;
    for (std::size_t i = 0; i < count; ++i) {
        const double t = static_cast<double>(i) * 0.008;
        const double way = 500 * t + 260 * std::sin(2.4 * t) / 2.4;
        samples.push_back({{std::round(100 + std::fmod(way, 1400)), std::round(300 + 40 * std::sin(way / 25))}, t, {}});
    }
    return samples;
}

void lineUnderThePen(benchmark::State& state) {
    const auto samples = waves(static_cast<std::size_t>(state.range(0)));
    std::vector<InkStroke> line;
    for ([[maybe_unused]] auto _ : state) line = {penStroke(samples, "ink", 6)};
    state.counters["points"] = static_cast<double>(line[0].points.size());
    state.counters["bytes"] = static_cast<double>(Wire::encode(line)->size());
}

// The same as an equally wide one, to compare with.
void plainLine(benchmark::State& state) {
    std::vector<Point> places;
    for (const auto& sample : waves(static_cast<std::size_t>(state.range(0)))) places.push_back(sample.place);
    std::vector<InkStroke> line;
    for ([[maybe_unused]] auto _ : state) line = {inkStroke(places, "ink", 6)};
    state.counters["points"] = static_cast<double>(line[0].points.size());
    state.counters["bytes"] = static_cast<double>(Wire::encode(line)->size());
}

// One step of the eraser over a doodle of a hundred lines that it touches a few of.
void eraserStep(benchmark::State& state) {
    const std::vector<InkStroke> strokes(100, penStroke(waves(120), "ink", 6));
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(eraseInk(strokes, {300, 300}, {310, 310}, 14));
}

BENCHMARK(lineUnderThePen)->Arg(100)->Arg(1000)->Arg(2048)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainLine)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(eraserStep)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace lumaro
