// SPDX-License-Identifier: Apache-2.0
// The board's rules on a full board.
#include "LumaroCore/BoardLogic/Apply.h"
#include "LumaroCore/BoardLogic/BoardDiff.h"
#include "LumaroCore/BoardLogic/Edits.h"
#include "LumaroCore/BoardLogic/Placing.h"
#include "LumaroCore/BoardLogic/SharedBoard.h"
#include "Samples/Samples.h"

#include <benchmark/benchmark.h>

#include <span>
#include <vector>

namespace lumaro {
namespace {

using namespace std::chrono_literals;

// Moves of `count` items of the board, one version after the other, each newer than what it replaces.
std::vector<Op> moves(const Board& board, std::size_t count) {
    std::vector<Op> ops;
    for (std::size_t i = 0; i < count; ++i) {
        auto item = board.items[i % board.items.size()];
        item.center = {100.5 + static_cast<double>(i), 200.5};
        item.updatedAt = samples::noon + 1h + std::chrono::milliseconds{i};
        ops.push_back({Upsert{item}});
    }
    return ops;
}

void applyOps(benchmark::State& state, Board (*make)()) {
    const auto board = make();
    const auto ops = moves(board, static_cast<std::size_t>(state.range(0)));
    std::size_t applied = 0;
    for ([[maybe_unused]] auto _ : state) {
        auto result = BoardLogic::apply(ops, board, samples::noon);
        applied = result.applied.size();
        benchmark::DoNotOptimize(result);
    }
    state.counters["applied"] = static_cast<double>(applied);
}

// One step of a drag: the edit, and its batch applied over the shown board.
void projectOneOp(benchmark::State& state) {
    const SharedBoard resting{samples::fullBoard(), {}, samples::noon};
    const auto ops = moves(resting.shown(), 1);
    for ([[maybe_unused]] auto _ : state) {
        SharedBoard board = resting;
        benchmark::DoNotOptimize(board.enqueue({samples::numberedId(1), ops}, samples::noon));
    }
}

// A partner's op while batches of one's own wait.
void projectOverPending(benchmark::State& state) {
    SharedBoard board{samples::fullBoard(), {}, samples::noon};
    const auto waiting = static_cast<std::size_t>(state.range(0));
    const auto ops = moves(board.shown(), waiting + 1);
    for (std::size_t i = 0; i < waiting; ++i) board.enqueue({samples::numberedId(i), {ops[i]}}, samples::noon);
    for ([[maybe_unused]] auto _ : state) {
        board.applyRemote(std::span{ops}.last(1), samples::noon);
        benchmark::DoNotOptimize(board);
    }
}

void openSpot(benchmark::State& state) {
    const auto board = samples::fullBoard();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(BoardLogic::openSpot(BoardSpec::noteSize, board));
}

// Between two boards that share nothing but their values, as after a "welcome"; one item moved, one came, one went.
void diffBoards(benchmark::State& state) {
    const auto before = samples::fullBoard();
    auto after = samples::fullBoard();
    after.items.erase(after.items.begin() + 20);
    after.items[30].center.x += 10;
    auto added = after.items.front();
    added.id = samples::numberedId(1);
    after.items.push_back(added);
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(BoardLogic::diff(before, after));
}

BENCHMARK_CAPTURE(applyOps, small, samples::fullBoard)->Arg(1)->Arg(100);
BENCHMARK_CAPTURE(applyOps, heavy, samples::heavyBoard)->Arg(1);
BENCHMARK(projectOneOp);
BENCHMARK(projectOverPending)->Arg(10)->Arg(10000);
BENCHMARK(openSpot);
BENCHMARK(diffBoards);

} // namespace
} // namespace lumaro
