// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tests/Fakes/MemoryFileSystem.h"
#include "Tests/Simulation/Coverage.h"
#include "Tests/Simulation/Mutants.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace lumaro::simulation {

/// Thrown where a device's process is killed within a call; caught where the event began that led there.
struct DeviceDied {
    std::size_t device = 0;
};

/// A device's disk in memory. It fails when the script says so, and ends the process at the call that the script names.
class SimDisk final : public FileSystem {
public:
    SimDisk(std::size_t device, Sabotage sabotage, Coverage& coverage)
        : device_(device), sabotage_(sabotage), coverage_(coverage) {}

    [[nodiscard]] FileResult<void> createDirectories(const std::string& path) override;
    [[nodiscard]] FileResult<std::vector<std::string>> listFiles(const std::string& directory) override;
    [[nodiscard]] FileResult<std::string> readFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> writeFile(const std::string& path, std::string_view bytes) override;
    [[nodiscard]] FileResult<void> syncFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> syncDirectory(const std::string& path) override;
    [[nodiscard]] FileResult<void> rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] FileResult<void> removeFile(const std::string& path) override;

    /// The process ends at the n-th call from now; 1 is the next one.
    void killAt(int call) { untilKill_ = call; }
    /// So many writes find the disk full.
    void fill(int writes) { fullWrites_ = writes; }
    /// So many calls fail with this fault; a read of one file at most twice, as nobody can read a disk that never
    /// answers.
    enum class Ailing : std::uint8_t { everything, reading };
    void ail(Ailing what, FileFault fault, int calls);
    /// All of the above is over.
    void heal();
    void losePower(std::size_t tornBytes) { files_.crash(tornBytes); }

private:
    std::optional<FileFault> meet(std::string_view call, const std::string& path);
    std::unexpected<FileError> failure(FileFault fault, const std::string& path) const;

    std::size_t device_;
    Sabotage sabotage_;
    Coverage& coverage_;
    MemoryFileSystem files_;
    int untilKill_ = 0;
    int fullWrites_ = 0;
    int ailingCalls_ = 0;
    Ailing ailing_ = Ailing::everything;
    FileFault ailment_ = FileFault::inOut;
    std::map<std::string, int> failedReads_;
};

} // namespace lumaro::simulation
