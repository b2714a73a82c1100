// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/PosixFileSystem.h"

#include "Platform/Posix/PosixFault.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace lumaro {
namespace {

std::unexpected<FileError> failure(const std::string& path, int code) {
    return std::unexpected(posixError(path, code));
}

// An open file, closed at the latest when it goes.
class Descriptor {
public:
    Descriptor(const std::string& path, int flags)
        : number_(::open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR)) {}
    ~Descriptor() { static_cast<void>(close()); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    // False with `errno` set: some file systems tell only now that a write had no room.
    bool close() {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0;
    }

private:
    int number_;
};

FileResult<void> syncPath(const std::string& path, int flags) {
    const Descriptor file{path, flags};
    if (!file.isOpen() || ::fsync(file.number()) != 0) return failure(path, errno);
    return {};
}

} // namespace

FileResult<void> PosixFileSystem::createDirectories(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const auto folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), S_IRWXU) != 0) {
            // An existing folder above ours may refuse for other reasons than being there.
            const int code = errno;
            struct stat status{};
            if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return failure(folder, code);
        }
        if (end == std::string::npos) return {};
    }
}

FileResult<std::vector<std::string>> PosixFileSystem::listFiles(const std::string& directory) {
    std::vector<std::string> names;
    std::error_code code;
    std::filesystem::directory_iterator entry{directory, code};
    for (; !code && entry != std::filesystem::directory_iterator{}; entry.increment(code)) {
        std::error_code unknown;
        if (entry->is_regular_file(unknown)) names.push_back(entry->path().filename().string());
    }
    if (code) return failure(directory, code.value());
    return names;
}

FileResult<std::string> PosixFileSystem::readFile(const std::string& path) {
    const Descriptor file{path, O_RDONLY};
    if (!file.isOpen()) return failure(path, errno);
    std::string bytes;
    std::array<char, 65536> chunk; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by read
    for (;;) {
        const auto count = ::read(file.number(), chunk.data(), chunk.size());
        if (count < 0) return failure(path, errno);
        if (count == 0) return bytes;
        bytes.append(chunk.data(), static_cast<std::size_t>(count));
    }
}

FileResult<void> PosixFileSystem::writeFile(const std::string& path, std::string_view bytes) {
    Descriptor file{path, O_WRONLY | O_CREAT | O_TRUNC};
    if (!file.isOpen()) return failure(path, errno);
    while (!bytes.empty()) {
        const auto count = ::write(file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return failure(path, errno);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    if (!file.close()) return failure(path, errno);
    return {};
}

FileResult<void> PosixFileSystem::syncFile(const std::string& path) {
    return syncPath(path, O_WRONLY);
}

FileResult<void> PosixFileSystem::syncDirectory(const std::string& path) {
    return syncPath(path, O_RDONLY | O_DIRECTORY);
}

FileResult<void> PosixFileSystem::rename(const std::string& from, const std::string& to) {
    if (std::rename(from.c_str(), to.c_str()) != 0) return failure(from, errno);
    return {};
}

FileResult<void> PosixFileSystem::removeFile(const std::string& path) {
    if (::unlink(path.c_str()) != 0) return failure(path, errno);
    return {};
}

} // namespace lumaro
