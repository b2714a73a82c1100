// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Outbox/FileSystem.h"
#include "LumaroCore/Services/SecretStore.h"

#include <string>

namespace lumaro {

/// Secrets as files that only their owner may read, one an item, for people whose computer keeps no secrets and who
/// said yes to it. Anyone who can read the disk can read them. The file system makes files for their owner alone.
class FileSecretStore final : public SecretStore {
public:
    /// The folder is made with the first item.
    FileSecretStore(FileSystem& files, std::string folder) : files_(files), folder_(std::move(folder)) {}

    [[nodiscard]] std::expected<std::string, SecretStatus> query(const SecretAddress& address) override;
    [[nodiscard]] SecretStatus add(const SecretAddress& address, std::string_view data) override;
    [[nodiscard]] SecretStatus update(const SecretAddress& address, std::string_view data) override;
    [[nodiscard]] SecretStatus remove(const SecretAddress& address) override;

private:
    FileSystem& files_;
    std::string folder_;
};

} // namespace lumaro
