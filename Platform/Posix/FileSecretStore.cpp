// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/FileSecretStore.h"

#include "LumaroCore/Outbox/ReplaceFile.h"

#include <utility>

namespace lumaro {
namespace {

bool mayStandInName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' ||
           c == '_';
}

// Anything but letters, digits and ".-_" as two hexadecimal digits behind "%": the name leads into no other folder.
std::string escaped(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string name;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (mayStandInName(c)) {
            name.push_back(c);
        } else {
            name.append({'%', digits[byte >> 4U], digits[byte & 0x0FU]});
        }
    }
    return name;
}

std::string nameOf(const SecretAddress& address) {
    return escaped(address.service) + "@" + escaped(address.account);
}

SecretStatus statusOf(const FileResult<void>& result) {
    if (result) return SecretStatus::success;
    return result.error().fault == FileFault::notFound ? SecretStatus::itemNotFound : SecretStatus::other;
}

} // namespace

std::expected<std::string, SecretStatus> FileSecretStore::query(const SecretAddress& address) {
    auto data = files_.readFile(folder_ + "/" + nameOf(address));
    if (data) return std::move(*data);
    return std::unexpected(data.error().fault == FileFault::notFound ? SecretStatus::itemNotFound
                                                                     : SecretStatus::other);
}

SecretStatus FileSecretStore::add(const SecretAddress& address, std::string_view data) {
    const auto before = query(address);
    if (before) return SecretStatus::duplicateItem;
    if (before.error() != SecretStatus::itemNotFound) return before.error();
    return replaceFile(files_, folder_, nameOf(address), data) ? SecretStatus::success : SecretStatus::other;
}

SecretStatus FileSecretStore::update(const SecretAddress& address, std::string_view data) {
    if (const auto before = query(address); !before) return before.error();
    return replaceFile(files_, folder_, nameOf(address), data) ? SecretStatus::success : SecretStatus::other;
}

SecretStatus FileSecretStore::remove(const SecretAddress& address) {
    const auto status = statusOf(files_.removeFile(folder_ + "/" + nameOf(address)));
    if (status != SecretStatus::success) return status;
    return files_.syncDirectory(folder_) ? SecretStatus::success : SecretStatus::other;
}

} // namespace lumaro
