// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lumaro::simulation {

/// What may happen in a run. A suite of seeds in which one of these never happened has shown nothing about it.
enum class Met : std::uint8_t {
    acts,
    actsInManyBatches,
    actsQueued,
    actsRefused,
    actsRefusedByDisk,
    actsTakenBack,
    undosRefused,
    draftsTakenDown,
    draftsLetGo,
    notesExpired,
    batchesInStore,
    batchesAcked,
    duplicates,
    duplicatesBeyondMemory,
    rejectedOps,
    corrections,
    reloads,
    presence,
    songsShown,
    songsKeptToOneself,
    placesShown,
    placesKeptToOneself,
    connections,
    retriesAtOnce,
    cuts,
    framesLost,
    halfOpenLines,
    silenceNoticed,
    idleSocketsClosed,
    unreachable,
    deviceKills,
    killsAtFileCalls,
    powerLosses,
    startsRefusedByDisk,
    outboxRecoveries,
    readHiccups,
    serverKillsBeforeCommit,
    serverKillsAfterCommit,
    serverKillsAmidAcks,
    storeFaults,
    foreignCommits,
    sweeps,
    clockJumps,
    yearsAway,
    joinsByCode,
    joinsByLink,
    personsChosen,
    departures,
    tokensRejected,
    thirdDevices,
    twoApplications,
    threadsTied,
    fullBoards,
    deletedItemsBack,
    calms,
    count,
};

constexpr std::array<std::string_view, static_cast<std::size_t>(Met::count)> namesOf(Met) {
    return {"acts",
            "acts in many batches",
            "acts queued",
            "acts refused",
            "acts refused by the disk",
            "acts taken back",
            "undos refused",
            "items taken down while in the hand",
            "such items let go",
            "notes whose time was over",
            "batches in the store",
            "batches acked",
            "duplicates",
            "duplicates beyond the room's memory",
            "rejected ops",
            "corrections by welcome",
            "rooms reloaded",
            "presence relayed",
            "songs shown to the partner at rest",
            "songs kept to oneself at rest",
            "places shown to the partner at rest",
            "places kept to oneself at rest",
            "connections",
            "retries at once",
            "cut lines",
            "frames lost",
            "half-open lines",
            "silences noticed",
            "idle sockets closed",
            "servers out of reach",
            "devices killed",
            "devices killed at a file call",
            "power losses",
            "starts refused by the disk",
            "batches found in the outbox",
            "reads that needed a second try",
            "servers killed before a commit",
            "servers killed after a commit",
            "servers killed amid acks",
            "commits refused by the store",
            "commits of another node",
            "sweeps",
            "clock jumps",
            "years away",
            "joins by code",
            "joins by link",
            "persons chosen",
            "departures from the board",
            "tokens rejected",
            "third devices",
            "pairs of applications",
            "threads tied",
            "full boards",
            "deleted items put up again",
            "calms"};
}

class Coverage {
public:
    void note(Met met, std::uint64_t times = 1) { counts_[static_cast<std::size_t>(met)] += times; }
    std::uint64_t of(Met met) const { return counts_[static_cast<std::size_t>(met)]; }
    void add(const Coverage& other) {
        for (std::size_t i = 0; i < counts_.size(); ++i) counts_[i] += other.counts_[i];
    }

private:
    std::array<std::uint64_t, static_cast<std::size_t>(Met::count)> counts_{};
};

} // namespace lumaro::simulation
