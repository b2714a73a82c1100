// SPDX-License-Identifier: Apache-2.0
// How long a picture of the board's full size takes under the scissors, from the first guess to the sticker; and how
// well the guess fits the made-up scenes, as "alike": shared area over joint area, the mean of all scenes of a kind.
#include "Lumaro/Pictures/CutOut.h"
#include "Tests/Pictures/CutOutScenes.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>

namespace lumaro {
namespace {

constexpr int fullSide = 2048;
constexpr unsigned scenes = 40;
constexpr int sceneSide = 800;

CutOutScene::Subject subjectOf(const benchmark::State& state) {
    return static_cast<CutOutScene::Subject>(state.range(0));
}

void guess(benchmark::State& state) {
    const auto scene = CutOutScene::make(subjectOf(state), 1, fullSide);
    for (auto _ : state) {
        CutOut cut{scene.photo};
        cut.guess();
        benchmark::DoNotOptimize(cut.outline());
    }
    state.SetLabel(std::string{nameOf(subjectOf(state))});
}

void stroke(benchmark::State& state) {
    const auto scene = CutOutScene::make(subjectOf(state), 1, fullSide);
    CutOut cut{scene.photo};
    cut.guess();
    for (auto _ : state) {
        cut.scribble(std::array{QPointF{900, 700}, QPointF{1000, 900}}, 60, CutOut::Scribble::keep);
        benchmark::DoNotOptimize(cut.outline());
    }
    state.SetLabel(std::string{nameOf(subjectOf(state))});
}

void sticker(benchmark::State& state) {
    const auto scene = CutOutScene::make(subjectOf(state), 1, fullSide);
    CutOut cut{scene.photo};
    cut.guess();
    for (auto _ : state) benchmark::DoNotOptimize(cut.sticker());
    state.SetLabel(std::string{nameOf(subjectOf(state))});
}

void likenessOfGuess(benchmark::State& state) {
    double sum = 0;
    double least = 1;
    for (auto _ : state) {
        for (unsigned seed = 1; seed <= scenes; ++seed) {
            const auto scene = CutOutScene::make(subjectOf(state), seed, sceneSide);
            CutOut cut{scene.photo};
            cut.guess();
            const double alike = likeness(cut.mask(), scene.truth);
            sum += alike;
            least = std::min(least, alike);
        }
    }
    state.counters["alike"] = sum / scenes;
    state.counters["least"] = least;
    state.SetLabel(std::string{nameOf(subjectOf(state))});
}

BENCHMARK(guess)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(stroke)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(sticker)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(likenessOfGuess)->DenseRange(0, 2)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
} // namespace lumaro
