// SPDX-License-Identifier: Apache-2.0
#include "Tests/Simulation/SimDisk.h"

namespace lumaro::simulation {

void SimDisk::ail(Ailing what, FileFault fault, int calls) {
    ailing_ = what;
    ailment_ = fault;
    ailingCalls_ = calls;
    failedReads_.clear();
}

void SimDisk::heal() {
    untilKill_ = fullWrites_ = ailingCalls_ = 0;
}

std::unexpected<FileError> SimDisk::failure(FileFault fault, const std::string& path) const {
    return std::unexpected(FileError{fault, path, "as the script wants it"});
}

std::optional<FileFault> SimDisk::meet(std::string_view call, const std::string& path) {
    if (untilKill_ > 0 && --untilKill_ == 0) {
        coverage_.note(Met::killsAtFileCalls);
        throw DeviceDied{device_};
    }
    if (call == "writeFile" && fullWrites_ > 0) {
        --fullWrites_;
        return FileFault::noSpace;
    }
    const bool isRead = call == "readFile";
    if (ailingCalls_ == 0 || (ailing_ == Ailing::reading && !isRead)) return std::nullopt;
    if (isRead) {
        constexpr int mostInARow = 2;
        if (failedReads_[path]++ >= mostInARow) return std::nullopt;
        coverage_.note(Met::readHiccups);
    }
    --ailingCalls_;
    return ailment_;
}

FileResult<void> SimDisk::createDirectories(const std::string& path) {
    if (const auto fault = meet("createDirectories", path)) return failure(*fault, path);
    return files_.createDirectories(path);
}

FileResult<std::vector<std::string>> SimDisk::listFiles(const std::string& directory) {
    if (const auto fault = meet("listFiles", directory)) return failure(*fault, directory);
    return files_.listFiles(directory);
}

FileResult<std::string> SimDisk::readFile(const std::string& path) {
    if (const auto fault = meet("readFile", path)) return failure(*fault, path);
    return files_.readFile(path);
}

// A write that fails, or that the process does not survive, leaves half of its bytes behind.
FileResult<void> SimDisk::writeFile(const std::string& path, std::string_view bytes) {
    const auto half = bytes.substr(0, bytes.size() / 2);
    if (untilKill_ == 1) static_cast<void>(files_.writeFile(path, half));
    if (const auto fault = meet("writeFile", path)) {
        static_cast<void>(files_.writeFile(path, half));
        return failure(*fault, path);
    }
    return files_.writeFile(path, bytes);
}

FileResult<void> SimDisk::syncFile(const std::string& path) {
    if (const auto fault = meet("syncFile", path)) return failure(*fault, path);
    if (sabotage_ == Sabotage::filesAreNotSynced) return {};
    return files_.syncFile(path);
}

FileResult<void> SimDisk::syncDirectory(const std::string& path) {
    if (const auto fault = meet("syncDirectory", path)) return failure(*fault, path);
    if (sabotage_ == Sabotage::foldersAreNotSynced) return {};
    return files_.syncDirectory(path);
}

FileResult<void> SimDisk::rename(const std::string& from, const std::string& to) {
    if (const auto fault = meet("rename", from)) return failure(*fault, from);
    return files_.rename(from, to);
}

FileResult<void> SimDisk::removeFile(const std::string& path) {
    if (const auto fault = meet("removeFile", path)) return failure(*fault, path);
    return files_.removeFile(path);
}

} // namespace lumaro::simulation
