// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/SecretStore.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// Secrets in memory, in a store that a test can lock or make fail.
template <class Store>
class MemorySecrets final : public Store {
public:
    [[nodiscard]] std::expected<std::string, SecretStatus> query(const SecretAddress& address) override {
        if (const auto failed = faultOf("query", address)) return std::unexpected(*failed);
        const auto found = items.find(address);
        if (found == items.end()) return std::unexpected(SecretStatus::itemNotFound);
        return found->second;
    }

    [[nodiscard]] SecretStatus add(const SecretAddress& address, std::string_view data) override {
        if (const auto failed = faultOf("add", address)) return *failed;
        return items.try_emplace(address, data).second ? SecretStatus::success : SecretStatus::duplicateItem;
    }

    [[nodiscard]] SecretStatus update(const SecretAddress& address, std::string_view data) override {
        if (const auto failed = faultOf("update", address)) return *failed;
        const auto found = items.find(address);
        if (found == items.end()) return SecretStatus::itemNotFound;
        found->second = data;
        return SecretStatus::success;
    }

    [[nodiscard]] SecretStatus remove(const SecretAddress& address) override {
        if (const auto failed = faultOf("remove", address)) return *failed;
        return items.erase(address) != 0 ? SecretStatus::success : SecretStatus::itemNotFound;
    }

    std::map<SecretAddress, std::string> items;
    /// Every call answers it, such as `SecretStatus::locked`.
    std::optional<SecretStatus> refusal;
    /// What a call answers instead, by its name and what it is about: "query", "add", "update" or "remove".
    std::function<std::optional<SecretStatus>(std::string_view call, const SecretAddress& address)> fault;
    /// All calls there ever were, as "query joinToken".
    std::vector<std::string> calls;

private:
    std::optional<SecretStatus> faultOf(std::string_view call, const SecretAddress& address) {
        calls.push_back(std::string{call} + " " + address.account);
        if (refusal) return refusal;
        return fault ? fault(call, address) : std::nullopt;
    }
};

using MemorySecretStore = MemorySecrets<SecretStore>;
using MemoryKeyring = MemorySecrets<Keyring>;

} // namespace lumaro
