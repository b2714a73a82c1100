// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace lumaro {

enum class FileFault : std::uint8_t {
    notFound,
    noSpace,     ///< the disk or the quota is full
    denied,      ///< no permission, or a read-only file system
    interrupted, ///< by a signal; the same call may go through
    inOut,       ///< the disk did not answer well; the same call may go through
    other,
};

struct FileError {
    FileFault fault = FileFault::other;
    std::string path;
    std::string message; ///< the system's own words, for the log

    bool operator==(const FileError&) const = default;
};

template <class T>
using FileResult = std::expected<T, FileError>;

/// The disk, as far as durable storage needs it. Paths are separated by "/". Blocks; used from one thread at a time.
///
/// Nothing is durable by itself: after a loss of power a file holds what its last `syncFile` saw, under the name its
/// folder had at the last `syncDirectory`. Between the two, anything may be found: the old, the new, or a part of the
/// new.
class FileSystem {
public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    /// The folder and all above it exist afterwards; no fault when they did before.
    [[nodiscard]] virtual FileResult<void> createDirectories(const std::string& path) = 0;
    /// The names of the files in a folder, hidden ones too, without subfolders, in no order.
    [[nodiscard]] virtual FileResult<std::vector<std::string>> listFiles(const std::string& directory) = 0;
    [[nodiscard]] virtual FileResult<std::string> readFile(const std::string& path) = 0;
    /// Makes the file, or replaces what it holds. After a fault it may hold a part of `bytes`.
    [[nodiscard]] virtual FileResult<void> writeFile(const std::string& path, std::string_view bytes) = 0;
    [[nodiscard]] virtual FileResult<void> syncFile(const std::string& path) = 0;
    [[nodiscard]] virtual FileResult<void> syncDirectory(const std::string& path) = 0;
    /// Gives the file its new name in one step, in place of a file that has it. After a fault both are as they were.
    [[nodiscard]] virtual FileResult<void> rename(const std::string& from, const std::string& to) = 0;
    [[nodiscard]] virtual FileResult<void> removeFile(const std::string& path) = 0;
};

} // namespace lumaro
