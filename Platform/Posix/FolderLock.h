// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"

#include <expected>
#include <string>
#include <variant>

namespace lumaro {

/// Makes this process the only owner of a folder, through a lock on a file in it. It ends with the object, and with the
/// process however that ends.
class FolderLock {
public:
    /// Another process has the folder.
    struct Held {
        int process = 0; ///< its id; 0 when that is not known
    };
    using Error = std::variant<Held, FileError>;

    /// Takes the lock in `path`, a file that is made when it is missing and never removed. Does not wait.
    [[nodiscard]] static std::expected<FolderLock, Error> take(const std::string& path);

    FolderLock(FolderLock&& other) noexcept;
    FolderLock& operator=(FolderLock&& other) noexcept;
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

private:
    explicit FolderLock(int file) : file_(file) {}

    int file_;
};

} // namespace lumaro
