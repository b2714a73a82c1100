// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/LoadShard.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace lumaro {
namespace {

// Rooms that are made, and boards that are checked, at the same time.
constexpr std::size_t roomsAtOnce = 16;
constexpr Seconds heartbeatInterval{30};
// What is under way may take this long before it counts as lost.
constexpr Seconds patience{10};

} // namespace

std::expected<std::unique_ptr<LoadShard>, std::string> LoadShard::create(const LoadOptions& options, std::size_t number,
                                                                         std::size_t step) {
    auto network = LoadNetwork::create(options.server, static_cast<unsigned>(number));
    if (!network) return std::unexpected(std::move(network.error()));
    std::unique_ptr<LoadShard> shard{new LoadShard{options, std::move(*network)}};
    for (std::size_t room = number; room < options.rooms; room += step) {
        shard->rooms_.push_back(
            std::make_unique<LoadRoom>(*shard->network_, shard->pairing_, options, room, shard->findings_));
    }
    return shard;
}

LoadShard::LoadShard(const LoadOptions& options, std::unique_ptr<LoadNetwork> network)
    : options_(options), network_(std::move(network)), pairing_(options.server, "load", network_->http(), log_) {
    beatHearts();
}

void LoadShard::beatHearts() {
    for (const auto& room : rooms_) room->sendHeartbeat();
    heartbeat_ = network_->sleeper().wait(heartbeatInterval, [this] { beatHearts(); });
}

std::expected<void, std::string> LoadShard::prepare() {
    if (rooms_.empty()) return {};
    for (std::size_t i = 0; i < roomsAtOnce; ++i) prepareNext();
    network_->run();
    if (!failure_.empty()) return std::unexpected(failure_);
    return {};
}

void LoadShard::prepareNext() {
    if (started_ == rooms_.size()) return;
    rooms_.at(started_++)->prepare([this](std::expected<void, std::string> result) { prepared(std::move(result)); });
}

void LoadShard::prepared(std::expected<void, std::string> result) {
    if (!result && failure_.empty()) failure_ = std::move(result.error());
    ++ended_;
    if (!failure_.empty() || ended_ == rooms_.size()) return network_->stop();
    prepareNext();
}

void LoadShard::runFor(Seconds span) {
    const auto end = network_->sleeper().wait(span, [this] { network_->stop(); });
    network_->run();
}

void LoadShard::rest(Seconds span) {
    runFor(span);
}

void LoadShard::load() {
    const bool isEditing = options_.mode == LoadMode::edit || options_.rate.has_value();
    const double spread = 1 / options_.rate.value_or(1) / static_cast<double>(std::max<std::size_t>(rooms_.size(), 1));
    for (std::size_t i = 0; i < rooms_.size() && isEditing; ++i)
        rooms_.at(i)->start(Seconds{spread * static_cast<double>(i)});
    if (options_.mode == LoadMode::join) joinNext();
    runFor(Seconds{options_.warmup});
    findings_.isMeasuring = true;
    runFor(Seconds{options_.seconds});
    findings_.isMeasuring = false;
    join_.reset();
    nextJoin_.reset();
    for (const auto& room : rooms_) room->stop();
}

// The next one begins in a turn of its own, once the last one is gone.
void LoadShard::joinNext() {
    nextJoin_ = network_->sleeper().wait(Seconds{0}, [this] {
        if (rooms_.empty()) return;
        const CoupleToken& token = rooms_.at(started_++ % rooms_.size())->token();
        join_ = std::make_unique<JoinProbe>(*network_, options_.server, token, findings_, [this] { joinNext(); });
    });
}

void LoadShard::settle() {
    const auto isSettled = [](const auto& room) { return room->isSettled(); };
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!std::ranges::all_of(rooms_, isSettled) && std::chrono::steady_clock::now() < deadline)
        runFor(Seconds{0.01});
    // Whatever should not come would come now.
    runFor(Seconds{0.2});
    started_ = ended_ = 0;
    if (rooms_.empty()) return;
    for (std::size_t i = 0; i < roomsAtOnce; ++i) checkNext();
    network_->run();
}

void LoadShard::checkNext() {
    if (started_ == rooms_.size()) return;
    rooms_.at(started_++)->check([this] {
        if (++ended_ == rooms_.size()) return network_->stop();
        checkNext();
    });
}

} // namespace lumaro
