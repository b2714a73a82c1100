// SPDX-License-Identifier: Apache-2.0
// Durable edits in the SQLite store, and what the file system takes to make anything durable. LUMARO_BENCH_DIR is the
// folder that is measured, else the current one.
#include "LumaroRoom/Sqlite/SqliteStore.h"
#include "Samples/Samples.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace lumaro {
namespace {

class NoLog final : public Log {
public:
    void write(LogLevel, std::string_view, std::string_view) override {}
};

class Folder {
public:
    Folder() {
        const char* root = std::getenv("LUMARO_BENCH_DIR"); // NOLINT(concurrency-mt-unsafe): one thread
        path_ = std::string{root != nullptr ? root : "."} + "/lumaro-bench-XXXXXX";
        if (mkdtemp(path_.data()) == nullptr) std::abort();
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

// A room of 30 items, and the version it has.
struct BusyRoom {
    std::string coupleId;
    Board board = samples::typicalBoard();
    std::int64_t version = 0;
    std::size_t edits = 0;

    Commit commit(std::vector<BoardItem> items, std::optional<UUID> batchId) const {
        Commit commit{coupleId, version, batchId, samples::noon + std::chrono::milliseconds{edits}, {}};
        commit.change.updatedAt = commit.at;
        commit.change.upserted = std::move(items);
        return commit;
    }
    // Its next edit: an item that moves.
    Commit nextMove(const UUID& batchId) {
        auto item = board.items[edits++ % board.items.size()];
        item.center.x += static_cast<double>(edits % 1000);
        return commit({std::move(item)}, batchId);
    }
};

class Rooms {
public:
    explicit Rooms(std::int64_t count) {
        for (std::int64_t i = 0; i < count; ++i) {
            auto& room = rooms_.emplace_back();
            room.coupleId = "couple" + std::to_string(i);
            require(store_->createCouple({room.coupleId, samples::noon, std::nullopt}).has_value());
            require(store_->commit(room.commit(room.board.items, std::nullopt)) == CommitOutcome::stored);
            ++room.version;
        }
        require(store_->commitTransaction().has_value() && store_->beginTransaction().has_value());
    }

    TransactionalStore& store() { return *store_; }
    BusyRoom& next() { return rooms_[turn_++ % rooms_.size()]; }
    void edit() {
        auto& room = next();
        UUID batchId;
        for (auto& byte : batchId.bytes) byte = static_cast<std::uint8_t>(random_());
        require(store_->commit(room.nextMove(batchId)) == CommitOutcome::stored);
        ++room.version;
    }
    static void require(bool isDone) {
        if (!isDone) std::abort();
    }

private:
    Folder folder_;
    NoLog log_;
    std::unique_ptr<SqliteStore> store_ = [this] {
        auto opened = SqliteStore::open(folder_.file("room.db"), log_).value();
        require(opened->beginTransaction().has_value());
        return opened;
    }();
    std::vector<BusyRoom> rooms_;
    std::size_t turn_ = 0;
    samples::Random random_{1};
};

// Arguments: rooms, edits in a transaction. An iteration is an edit; its CPU time is the process's, in user and kernel.
void commitEdits(benchmark::State& state) {
    Rooms rooms{state.range(0)};
    const auto together = static_cast<std::size_t>(state.range(1));
    std::size_t waiting = 0;
    for ([[maybe_unused]] auto _ : state) {
        rooms.edit();
        if (++waiting < together) continue;
        waiting = 0;
        Rooms::require(rooms.store().commitTransaction() && rooms.store().beginTransaction());
    }
}

// A room with a year's batches comes into memory.
void loadRoom(benchmark::State& state) {
    Rooms rooms{1};
    for (std::int64_t i = 0; i < state.range(0); ++i) rooms.edit();
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(rooms.store().loadRoom("couple0"));
}

// The yardstick: 4 KiB more in a file, durable.
void appendAndSync(benchmark::State& state) {
    const Folder folder;
    const int file = ::open(folder.file("yardstick").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    const std::array<char, 4096> page{};
    for ([[maybe_unused]] auto _ : state) {
        Rooms::require(::write(file, page.data(), page.size()) == static_cast<ssize_t>(page.size()));
        Rooms::require(::fdatasync(file) == 0);
    }
    ::close(file);
}

BENCHMARK(appendAndSync)->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
// So many edits that each couple's commits go from the journal to the tables many times; fewer where each waits for
// the disk.
void busyRooms(benchmark::internal::Benchmark* benchmark) {
    benchmark->UseRealTime()->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
}
BENCHMARK(commitEdits)->Args({50, 1})->Iterations(5'000)->Apply(busyRooms);
BENCHMARK(commitEdits)->Args({50, 10})->Iterations(50'000)->Apply(busyRooms);
BENCHMARK(commitEdits)->Args({50, 50})->Args({1000, 50})->Iterations(200'000)->Apply(busyRooms);
BENCHMARK(loadRoom)->Arg(100)->Arg(20'000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace lumaro
