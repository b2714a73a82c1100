// SPDX-License-Identifier: Apache-2.0
#include "LumaroLoad/Probes.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace lumaro {
namespace {

std::string systemError(const std::string& what) {
    return what + ": " + std::strerror(errno); // NOLINT(concurrency-mt-unsafe): one thread measures
}

} // namespace

std::expected<ProcessUsage, std::string> usageOf(int process) {
    std::ifstream file{"/proc/" + std::to_string(process) + "/stat"};
    std::string line;
    if (!std::getline(file, line)) return std::unexpected("there is no process " + std::to_string(process));
    // The second field is the program's name in parentheses, and may hold anything.
    const auto nameEnd = line.rfind(')');
    if (nameEnd == std::string::npos) return std::unexpected("the process does not tell its usage");
    std::istringstream fields{line.substr(nameEnd + 1)};
    std::string passed;
    for (int field = 3; field < 14; ++field) fields >> passed;
    std::int64_t user = 0;
    std::int64_t system = 0;
    fields >> user >> system;
    for (int field = 16; field < 24; ++field) fields >> passed;
    std::int64_t pages = 0;
    if (!(fields >> pages)) return std::unexpected("the process does not tell its usage");
    return ProcessUsage{.cpu = std::chrono::microseconds{(user + system) * (1'000'000 / sysconf(_SC_CLK_TCK))},
                        .residentKiB = pages * (sysconf(_SC_PAGESIZE) / 1024)};
}

std::expected<Histogram, std::string> timeSyncs(const std::string& directory, std::size_t count) {
    std::string path = directory + "/lumaro-load-XXXXXX";
    const int file = mkstemp(path.data());
    if (file < 0) return std::unexpected(systemError(path));
    unlink(path.c_str());
    const std::array<char, 4096> block{};
    Histogram spans;
    std::expected<Histogram, std::string> result;
    for (std::size_t i = 0; i < count && result; ++i) {
        const auto began = std::chrono::steady_clock::now();
        if (write(file, block.data(), block.size()) != static_cast<ssize_t>(block.size()) || fdatasync(file) != 0)
            result = std::unexpected(systemError(directory));
        spans.record(std::chrono::steady_clock::now() - began);
    }
    close(file);
    if (result) result = spans;
    return result;
}

} // namespace lumaro
