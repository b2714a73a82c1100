// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"

namespace lumaro {

/// The system's own files. Files are made for their owner alone (0600), folders likewise (0700). It holds nothing, so
/// several threads may use it at once.
class PosixFileSystem final : public FileSystem {
public:
    [[nodiscard]] FileResult<void> createDirectories(const std::string& path) override;
    [[nodiscard]] FileResult<std::vector<std::string>> listFiles(const std::string& directory) override;
    [[nodiscard]] FileResult<std::string> readFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> writeFile(const std::string& path, std::string_view bytes) override;
    [[nodiscard]] FileResult<void> syncFile(const std::string& path) override;
    [[nodiscard]] FileResult<void> syncDirectory(const std::string& path) override;
    [[nodiscard]] FileResult<void> rename(const std::string& from, const std::string& to) override;
    [[nodiscard]] FileResult<void> removeFile(const std::string& path) override;
};

} // namespace lumaro
