// SPDX-License-Identifier: Apache-2.0
#include "LumaroRoom/Sqlite/DatabaseFiles.h"

#include "LumaroCore/Support/Overloaded.h"
#include "Platform/Posix/PosixFileSystem.h"

#include <filesystem>
#include <system_error>
#include <variant>

namespace lumaro {
namespace {

StoreFault faultOf(FileFault fault) {
    switch (fault) {
    case FileFault::notFound: return StoreFault::notFound;
    case FileFault::noSpace: return StoreFault::noSpace;
    case FileFault::denied: return StoreFault::denied;
    case FileFault::interrupted:
    case FileFault::inOut:
    case FileFault::other: break;
    }
    return StoreFault::other;
}

} // namespace

StoreError storeError(const FileError& error) {
    return {error.path + ": " + error.message, faultOf(error.fault)};
}

StoreResult<FolderLock> lockDatabase(const std::string& path) {
    auto lock = FolderLock::take(path + ".lock");
    if (lock) return std::move(*lock);
    const auto inUse = [&](const FolderLock::Held& held) {
        const auto process = held.process == 0 ? "" : " (" + std::to_string(held.process) + ")";
        return StoreError{path + ": in use by another process" + process, StoreFault::inUse};
    };
    const auto failed = [](const FileError& error) { return storeError(error); };
    return std::unexpected(std::visit(Overloaded{inUse, failed}, lock.error()));
}

std::string folderOf(const std::string& path) {
    const auto folder = std::filesystem::path{path}.parent_path().string();
    return folder.empty() ? "." : folder;
}

StoreResult<void> makeFolderOf(const std::string& path) {
    const auto made = PosixFileSystem{}.createDirectories(folderOf(path));
    if (!made) return std::unexpected(storeError(made.error()));
    return {};
}

StoreResult<void> createPrivately(const std::string& path) {
    std::error_code unknown;
    if (std::filesystem::exists(path, unknown)) return {};
    PosixFileSystem files;
    if (const auto made = files.writeFile(path, ""); !made) return std::unexpected(storeError(made.error()));
    return {};
}

} // namespace lumaro
