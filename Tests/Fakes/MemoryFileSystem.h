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

/// A disk in memory that knows what is durable: `crash` forgets all that was not synced, names and bytes. Fails when
/// the test wants it.
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

    /// What the call with this name fails with, e.g. "syncFile". One that writes leaves half of its bytes behind.
    std::function<std::optional<FileFault>(std::string_view call)> fault;

    /// A loss of power. Bytes of a file that were not synced are lost, but for `tornBytes` of them at its beginning.
    void crash(std::size_t tornBytes = 0);
    /// The names and bytes of all files, for a search through them.
    std::string everything() const {
        std::string all;
        for (const auto& [name, file] : names_) all.append(name).append(" ").append(file->bytes).append("\n");
        return all;
    }

private:
    struct File {
        std::string bytes;
        std::string durable;
    };
    using Names = std::map<std::string, std::shared_ptr<File>>;

    std::optional<FileFault> faultOf(std::string_view call) const { return fault ? fault(call) : std::nullopt; }

    Names names_;
    Names durableNames_;
    std::set<std::string> folders_;
};

} // namespace lumaro
