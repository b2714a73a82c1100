// SPDX-License-Identifier: Apache-2.0
// Reading and writing boards, beside what the JSON library needs without our types and what copying the bytes needs.
#include "LumaroCore/Support/Wire.h"
#include "Samples/Samples.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <string>

namespace lumaro {
namespace {

using MakeBoard = Board (*)();

std::string boardText(MakeBoard make) {
    return Wire::encode(make()).value();
}

void countBytes(benchmark::State& state, std::size_t size) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * static_cast<std::int64_t>(size));
    state.counters["text"] = static_cast<double>(size);
}

void decodeBoard(benchmark::State& state, MakeBoard make) {
    const auto text = boardText(make);
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(Wire::decode<Board>(text));
    countBytes(state, text.size());
}

void encodeBoard(benchmark::State& state, MakeBoard make) {
    const auto board = make();
    std::string out;
    for ([[maybe_unused]] auto _ : state) {
        out.clear();
        benchmark::DoNotOptimize(Wire::encodeTo(out, board));
    }
    countBytes(state, out.size());
}

// The library's own parse into its own tree, with its buffers kept between texts.
void libraryParse(benchmark::State& state, MakeBoard make) {
    const simdjson::padded_string text{boardText(make)};
    simdjson::dom::parser parser;
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(parser.parse(text).error());
    countBytes(state, text.size());
}

bool walk(simdjson::ondemand::value value) {
    switch (value.type().value()) {
    case simdjson::ondemand::json_type::array:
        for (auto element : value.get_array()) walk(element.value());
        return true;
    case simdjson::ondemand::json_type::object:
        for (auto field : value.get_object()) {
            benchmark::DoNotOptimize(field.unescaped_key().value());
            walk(field.value().value());
        }
        return true;
    case simdjson::ondemand::json_type::string: benchmark::DoNotOptimize(value.get_string().value()); return true;
    case simdjson::ondemand::json_type::number: benchmark::DoNotOptimize(value.get_double().value()); return true;
    case simdjson::ondemand::json_type::boolean: benchmark::DoNotOptimize(value.get_bool().value()); return true;
    case simdjson::ondemand::json_type::null: return value.is_null();
    }
    return false;
}

// The library's on-demand interface, every value read and dropped: the least that a reader built on it can cost.
void libraryWalk(benchmark::State& state, MakeBoard make) {
    const simdjson::padded_string text{boardText(make)};
    simdjson::ondemand::parser parser;
    for ([[maybe_unused]] auto _ : state) {
        auto document = parser.iterate(text);
        benchmark::DoNotOptimize(walk(document.get_value().value()));
    }
    countBytes(state, text.size());
}

void copyBytes(benchmark::State& state, MakeBoard make) {
    const auto text = boardText(make);
    std::string copy;
    for ([[maybe_unused]] auto _ : state) {
        copy.assign(text);
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
    countBytes(state, text.size());
}

BENCHMARK_CAPTURE(decodeBoard, typical, samples::typicalBoard);
BENCHMARK_CAPTURE(libraryParse, typical, samples::typicalBoard);
BENCHMARK_CAPTURE(libraryWalk, typical, samples::typicalBoard);
BENCHMARK_CAPTURE(encodeBoard, typical, samples::typicalBoard);
BENCHMARK_CAPTURE(copyBytes, typical, samples::typicalBoard);
BENCHMARK_CAPTURE(decodeBoard, heavy, samples::heavyBoard);
BENCHMARK_CAPTURE(libraryParse, heavy, samples::heavyBoard);
BENCHMARK_CAPTURE(libraryWalk, heavy, samples::heavyBoard);
BENCHMARK_CAPTURE(encodeBoard, heavy, samples::heavyBoard);
BENCHMARK_CAPTURE(copyBytes, heavy, samples::heavyBoard);

} // namespace
} // namespace lumaro
