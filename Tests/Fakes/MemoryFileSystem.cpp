// SPDX-License-Identifier: Apache-2.0
#include "Tests/Fakes/MemoryFileSystem.h"

#include <algorithm>
#include <utility>

namespace lumaro {
namespace {

std::unexpected<FileError> failure(FileFault fault, const std::string& path) {
    return std::unexpected(FileError{fault, path, "as the test wants it"});
}

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

} // namespace

FileResult<void> MemoryFileSystem::createDirectories(const std::string& path) {
    if (const auto failed = faultOf("createDirectories")) return failure(*failed, path);
    for (auto end = path.find('/', 1);; end = path.find('/', end + 1)) {
        folders_.insert(path.substr(0, end));
        if (end == std::string::npos) return {};
    }
}

FileResult<std::vector<std::string>> MemoryFileSystem::listFiles(const std::string& directory) {
    if (const auto failed = faultOf("listFiles")) return failure(*failed, directory);
    if (!folders_.contains(directory)) return failure(FileFault::notFound, directory);
    std::vector<std::string> names;
    for (const auto& [path, file] : names_) {
        if (folderOf(path) == directory) names.push_back(path.substr(directory.size() + 1));
    }
    // The port promises no order: callers that need one must sort.
    std::ranges::reverse(names);
    return names;
}

FileResult<std::string> MemoryFileSystem::readFile(const std::string& path) {
    if (const auto failed = faultOf("readFile")) return failure(*failed, path);
    const auto found = names_.find(path);
    if (found == names_.end()) return failure(FileFault::notFound, path);
    return found->second->bytes;
}

FileResult<void> MemoryFileSystem::writeFile(const std::string& path, std::string_view bytes) {
    const auto failed = faultOf("writeFile");
    if (!folders_.contains(folderOf(path))) return failure(failed.value_or(FileFault::notFound), path);
    auto& file = names_[path];
    if (!file) file = std::make_shared<File>();
    file->bytes = bytes.substr(0, failed ? bytes.size() / 2 : bytes.size());
    return failed ? failure(*failed, path) : FileResult<void>{};
}

FileResult<void> MemoryFileSystem::syncFile(const std::string& path) {
    if (const auto failed = faultOf("syncFile")) return failure(*failed, path);
    const auto found = names_.find(path);
    if (found == names_.end()) return failure(FileFault::notFound, path);
    found->second->durable = found->second->bytes;
    return {};
}

FileResult<void> MemoryFileSystem::syncDirectory(const std::string& path) {
    if (const auto failed = faultOf("syncDirectory")) return failure(*failed, path);
    if (!folders_.contains(path)) return failure(FileFault::notFound, path);
    const auto isInside = [&](const auto& entry) { return folderOf(entry.first) == path; };
    std::erase_if(durableNames_, isInside);
    std::ranges::copy_if(names_, std::inserter(durableNames_, durableNames_.end()), isInside);
    return {};
}

FileResult<void> MemoryFileSystem::rename(const std::string& from, const std::string& to) {
    if (const auto failed = faultOf("rename")) return failure(*failed, from);
    const auto found = names_.find(from);
    if (found == names_.end()) return failure(FileFault::notFound, from);
    auto file = found->second;
    names_.erase(found);
    names_[to] = std::move(file);
    return {};
}

FileResult<void> MemoryFileSystem::removeFile(const std::string& path) {
    if (const auto failed = faultOf("removeFile")) return failure(*failed, path);
    return names_.erase(path) > 0 ? FileResult<void>{} : failure(FileFault::notFound, path);
}

void MemoryFileSystem::crash(std::size_t tornBytes) {
    names_ = durableNames_;
    for (auto& [path, file] : names_) {
        if (file->bytes != file->durable) file->durable = file->bytes.substr(0, tornBytes);
        file->bytes = file->durable;
    }
}

} // namespace lumaro
