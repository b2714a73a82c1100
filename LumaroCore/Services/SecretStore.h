// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>

namespace lumaro {

/// What a store answers: one of these, or another code of the operating system as it stands.
enum class SecretStatus : std::int32_t {
    success = 0,
    itemNotFound = -25300,
    duplicateItem = -25299,
    locked = -25308,        ///< the store is shut, and nobody was asked to open it or nobody answered
    promptDismissed = -128, ///< the person was asked to open the store, and would not
    noService = -25291,     ///< nothing on this computer keeps secrets
    other = -25290,         ///< the store failed, or did not answer in time
};

/// Which item: a generic password, found by these two.
struct SecretAddress {
    std::string service;
    std::string account;

    auto operator<=>(const SecretAddress&) const = default;
};

/// Where this computer keeps secrets. The operations block, for a while when a person is asked to open the store and
/// never for ever; they are called on one thread at a time, never on the main one. Data are bytes of any kind.
class SecretStore {
public:
    SecretStore() = default;
    SecretStore(const SecretStore&) = delete;
    SecretStore& operator=(const SecretStore&) = delete;
    virtual ~SecretStore() = default;

    /// The data of the item. `itemNotFound` only when the store is open and has none; a store that is shut says so.
    [[nodiscard]] virtual std::expected<std::string, SecretStatus> query(const SecretAddress& address) = 0;
    /// `duplicateItem` when there is one, which stays as it was.
    [[nodiscard]] virtual SecretStatus add(const SecretAddress& address, std::string_view data) = 0;
    /// Gives the item that is there other data; `itemNotFound` when there is none.
    [[nodiscard]] virtual SecretStatus update(const SecretAddress& address, std::string_view data) = 0;
    [[nodiscard]] virtual SecretStatus remove(const SecretAddress& address) = 0;

    /// The person asks for their secrets: a store that does not ask again once it was dismissed may do so once more.
    /// From any thread; does not block.
    virtual void askAgain() {}
};

/// The system's own store, which may be shut or missing, and may ask the person.
class Keyring : public SecretStore {
public:
    /// Ends the operation under way, with `locked` when it waits for the person, and every later one with `other`: for
    /// a program that is about to end. From any thread; does not block.
    virtual void stop() {}
};

} // namespace lumaro
