// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/LoadRun.h"

#include "LumaroLoad/LoadShard.h"
#include "LumaroLoad/Probes.h"

#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

using LoadShards = std::vector<std::unique_ptr<LoadShard>>;

// Syncs before the load and again after it: the disk's own time may drift.
constexpr std::size_t syncsEachTime = 100;

std::expected<LoadShards, std::string> makeShards(const LoadOptions& options) {
    LoadShards shards;
    for (std::size_t i = 0; i < options.threads; ++i) {
        auto shard = LoadShard::create(options, i, options.threads);
        if (!shard) return std::unexpected(std::move(shard.error()));
        shards.push_back(std::move(*shard));
    }
    return shards;
}

// Runs the verb on all shards at once, each on a thread of its own, and `meanwhile` on this one.
void onAll(
    LoadShards& shards, const std::function<void(LoadShard&)>& verb, const std::function<void()>& meanwhile = [] {}) {
    std::vector<std::jthread> threads;
    threads.reserve(shards.size());
    for (const auto& shard : shards) threads.emplace_back([&verb, &shard] { verb(*shard); });
    meanwhile();
}

std::expected<void, std::string> prepareAll(LoadShards& shards) {
    std::vector<std::expected<void, std::string>> results(shards.size());
    std::vector<std::jthread> threads;
    threads.reserve(shards.size());
    for (std::size_t i = 0; i < shards.size(); ++i)
        threads.emplace_back([&results, &shards, i] { results[i] = shards[i]->prepare(); });
    threads.clear();
    for (auto& result : results) {
        if (!result) return result;
    }
    return {};
}

// What the server has used, where its process is known.
std::optional<ProcessUsage> serverUsage(const LoadOptions& options) {
    if (!options.serverProcess) return std::nullopt;
    const auto usage = usageOf(*options.serverProcess);
    return usage ? std::optional{*usage} : std::nullopt;
}

// The server's CPU time while the load is measured.
std::optional<std::chrono::microseconds> cpuDuringLoad(LoadShards& shards, const LoadOptions& options) {
    std::optional<ProcessUsage> before;
    std::optional<ProcessUsage> after;
    onAll(
        shards, [](LoadShard& shard) { shard.load(); },
        [&] {
            std::this_thread::sleep_for(Seconds{options.warmup});
            before = serverUsage(options);
            std::this_thread::sleep_for(Seconds{options.seconds});
            after = serverUsage(options);
        });
    if (!before || !after) return std::nullopt;
    return after->cpu - before->cpu;
}

// None: rooms that rest are measured by their memory.
std::optional<std::chrono::microseconds> cpuDuringRest(LoadShards& shards, const LoadOptions& options) {
    onAll(shards, [&](LoadShard& shard) { shard.rest(Seconds{options.settle}); });
    return std::nullopt;
}

Findings gather(const LoadShards& shards) {
    Findings all;
    for (const auto& shard : shards) all.add(shard->findings());
    return all;
}

std::expected<Report, std::string> measure(LoadShards& shards, const LoadOptions& options,
                                           std::optional<ProcessUsage> usageAtFirst) {
    auto syncs = timeSyncs(options.syncDirectory, syncsEachTime);
    if (!syncs) return std::unexpected(std::move(syncs.error()));
    const auto cpu = options.mode == LoadMode::idle ? cpuDuringRest(shards, options) : cpuDuringLoad(shards, options);
    const auto usageAtLast = serverUsage(options);
    onAll(shards, [](LoadShard& shard) { shard.settle(); });
    if (const auto again = timeSyncs(options.syncDirectory, syncsEachTime)) syncs->add(*again);
    return makeReport(options, {.findings = gather(shards),
                                .syncs = *syncs,
                                .cpu = cpu,
                                .usageAtFirst = usageAtFirst,
                                .usageAtLast = usageAtLast});
}

} // namespace

std::expected<Report, std::string> runLoad(const LoadOptions& options) {
    const auto usageAtFirst = serverUsage(options);
    if (options.serverProcess && !usageAtFirst) return std::unexpected("there is no such process to watch");
    auto shards = makeShards(options);
    if (!shards) return std::unexpected(std::move(shards.error()));
    if (auto prepared = prepareAll(*shards); !prepared) return std::unexpected(std::move(prepared.error()));
    return measure(*shards, options, usageAtFirst);
}

} // namespace lumaro
