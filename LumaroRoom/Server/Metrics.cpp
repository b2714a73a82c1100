// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Server/Metrics.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cstddef>
#include <fstream>
#include <string_view>
#include <utility>

namespace lumaro {
namespace {

constexpr double microsecond = 1e-6;

class Text {
public:
    void gauge(std::string_view name, std::string_view help, auto value) { metric(name, "gauge", help, value); }
    void counter(std::string_view name, std::string_view help, auto value) { metric(name, "counter", help, value); }
    void header(std::string_view name, std::string_view type, std::string_view help) {
        text_.append("# HELP ").append(name).append(" ").append(help).append("\n");
        text_.append("# TYPE ").append(name).append(" ").append(type).append("\n");
    }
    void sample(std::string_view name, auto value) {
        text_.append(name).append(" ").append(std::to_string(value)).append("\n");
    }
    std::string take() { return std::move(text_); }

private:
    void metric(std::string_view name, std::string_view type, std::string_view help, auto value) {
        header(name, type, help);
        sample(name, value);
    }

    std::string text_;
};

std::size_t residentBytes() {
    std::ifstream file{"/proc/self/statm"};
    std::size_t total = 0;
    std::size_t resident = 0;
    file >> total >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * microsecond;
}

void addProcess(Text& text) {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    text.counter("process_cpu_seconds_total", "Processor time used.",
                 seconds(usage.ru_utime) + seconds(usage.ru_stime));
    text.gauge("process_resident_memory_bytes", "Memory in use.", residentBytes());
}

void addRooms(Text& text, const RoomHost::Figures& rooms) {
    text.gauge("lumaro_rooms", "Rooms in memory.", rooms.rooms);
    text.gauge("lumaro_sockets", "Sockets in rooms.", rooms.sockets);
    text.counter("lumaro_batches_total", "Batches taken.", rooms.batches);
    text.counter("lumaro_duplicate_batches_total", "Batches that had been taken before.", rooms.duplicates);
    text.counter("lumaro_rejected_ops_total", "Ops without effect.", rooms.rejectedOps);
    text.counter("lumaro_unreadable_frames_total", "Frames that could not be read.", rooms.unreadable);
    text.counter("lumaro_room_reloads_total", "Rooms built anew after a refused commit.", rooms.reloads);
}

void addConnections(Text& text, const ConnectionFigures& connections) {
    text.gauge("lumaro_connections", "Connections that are open.", connections.open);
    text.counter("lumaro_connections_total", "Connections accepted.", connections.accepted);
    text.header("lumaro_http_answers_total", "counter", "HTTP answers by the first digit of their status.");
    for (std::size_t digit = 1; digit < connections.answers.size(); ++digit) {
        text.sample("lumaro_http_answers_total{status=\"" + std::to_string(digit) + "xx\"}",
                    connections.answers[digit]);
    }
    text.counter("lumaro_upgrades_total", "Sockets opened.", connections.upgrades);
    text.counter("lumaro_refused_upgrades_total", "Sockets refused.", connections.refusedUpgrades);
    text.counter("lumaro_frames_total", "Frames received.", connections.frames);
    text.counter("lumaro_delayed_frames_total", "Frames of sockets over their rate.", connections.delayed);
    text.counter("lumaro_slow_readers_total", "Sockets cut off for reading too slowly.", connections.slowReaders);
    text.counter("lumaro_silent_sockets_total", "Sockets closed for saying nothing.", connections.silent);
}

void addStore(Text& text, const StoreThread::Figures& store) {
    text.counter("lumaro_store_transactions_total", "Transactions committed.", store.transactions);
    text.counter("lumaro_store_works_total", "Works done in them.", store.works);
    text.counter("lumaro_store_failures_total", "Works that failed.", store.failures);
    text.gauge("lumaro_store_waiting", "Works that wait.", store.waiting);
}

} // namespace

void ShardFigures::add(const ShardFigures& other) {
    rooms.rooms += other.rooms.rooms;
    rooms.sockets += other.rooms.sockets;
    rooms.batches += other.rooms.batches;
    rooms.duplicates += other.rooms.duplicates;
    rooms.rejectedOps += other.rooms.rejectedOps;
    rooms.unreadable += other.rooms.unreadable;
    rooms.reloads += other.rooms.reloads;
    const auto& theirs = other.connections;
    connections.open += theirs.open;
    connections.accepted += theirs.accepted;
    for (std::size_t digit = 0; digit < theirs.answers.size(); ++digit) {
        connections.answers[digit] += theirs.answers[digit];
    }
    connections.upgrades += theirs.upgrades;
    connections.refusedUpgrades += theirs.refusedUpgrades;
    connections.frames += theirs.frames;
    connections.delayed += theirs.delayed;
    connections.slowReaders += theirs.slowReaders;
    connections.silent += theirs.silent;
}

std::string metricsText(const ShardFigures& shards, const StoreThread::Figures& store) {
    Text text;
    addRooms(text, shards.rooms);
    addConnections(text, shards.connections);
    addStore(text, store);
    addProcess(text);
    return text.take();
}

} // namespace lumaro
