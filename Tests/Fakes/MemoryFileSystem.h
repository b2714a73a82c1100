// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace lumaro {

/// A disk in memory that knows what is durable: `crash` forgets all that was not synced, names and bytes.
class MemoryFileSystem final : public FileSystem {
public:
    [[nodiscard]] FileResult<void> createDirectories(const std::string& path) override;
    [[nodiscard]] FileResult<std::vector<std::string>> listFiles(const std::string& directory) override;
    [[nodiscard]] FileResult<std::string> readFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> writeFile(const std::string& path, std::string_view bytes) override;
    [[nodiscard]] FileResult<void> syncFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> syncDirectory(const std::string& path) override;
    [[nodiscard]] FileResult<void> rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] FileResult<void> removeFile(const std::string& path) override;

    /// The power goes. Bytes of a file that were not synced are lost, but for `tornBytes` of them at its beginning.
    void crash(std::size_t tornBytes = 0);

private:
    struct File {
        std::string bytes;
        std::string durable;
    };
    using Names = std::map<std::string, std::shared_ptr<File>>;

    Names names_;
    Names durableNames_;
    std::set<std::string> folders_;
};

/// Passes calls on to another file system, but for those that `fault` answers with one. A call that writes leaves half
/// of its bytes behind.
class FaultyFileSystem final : public FileSystem {
public:
    /// The name of the call, and the path it is about.
    using Fault = std::function<std::optional<FileFault>(std::string_view call, const std::string& path)>;

    FaultyFileSystem(FileSystem& files, Fault fault) : files_(files), fault_(std::move(fault)) {}

    [[nodiscard]] FileResult<void> createDirectories(const std::string& path) override;
    [[nodiscard]] FileResult<std::vector<std::string>> listFiles(const std::string& directory) override;
    [[nodiscard]] FileResult<std::string> readFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> writeFile(const std::string& path, std::string_view bytes) override;
    [[nodiscard]] FileResult<void> syncFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> syncDirectory(const std::string& path) override;
    [[nodiscard]] FileResult<void> rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] FileResult<void> removeFile(const std::string& path) override;

private:
    template <class Call>
    std::invoke_result_t<Call> passed(std::string_view name, const std::string& path, Call call);

    FileSystem& files_;
    Fault fault_;
};

} // namespace lumaro
