// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/FolderLock.h"

#include "Platform/Posix/PosixFault.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <utility>

namespace lumaro {
namespace {

int processIn(int file) {
    std::array<char, 16> text{};
    const auto size = ::pread(file, text.data(), text.size(), 0);
    int process = 0;
    if (size > 0) std::from_chars(text.data(), text.data() + size, process);
    return process;
}

} // namespace

std::expected<FolderLock, FolderLock::Error> FolderLock::take(const std::string& path) {
    FolderLock lock{::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)};
    if (lock.file_ < 0) return std::unexpected(Error{posixError(path, errno)});
    while (::flock(lock.file_, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EWOULDBLOCK) return std::unexpected(Error{Held{processIn(lock.file_)}});
        if (errno != EINTR) return std::unexpected(Error{posixError(path, errno)});
    }
    // The number only serves a message: a disk too full to hold it locks nobody out.
    const auto number = std::to_string(::getpid()) + "\n";
    static_cast<void>(::ftruncate(lock.file_, 0) == 0 && ::pwrite(lock.file_, number.data(), number.size(), 0) > 0);
    return lock;
}

FolderLock::FolderLock(FolderLock&& other) noexcept : file_(std::exchange(other.file_, -1)) {
}

FolderLock& FolderLock::operator=(FolderLock&& other) noexcept {
    std::swap(file_, other.file_);
    return *this;
}

FolderLock::~FolderLock() {
    if (file_ >= 0) ::close(file_);
}

} // namespace lumaro
