// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/SecretStore.h"
#include "LumaroCore/Support/Fields.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

namespace lumaro {

/// What this program's secrets are filed under.
inline constexpr std::string_view keychainService = "app.lumaro.Lumaro";

/// The names of this program's secrets.
namespace KeychainAccount {
inline constexpr std::string_view joinToken = "joinToken"; ///< the token's raw string
inline constexpr std::string_view boardLink = "boardLink";
inline constexpr std::string_view leaving = "leaving"; ///< tokens of boards whose service has not heard of the leaving
} // namespace KeychainAccount

/// The invite link of a board that this device started: what brings the partner back.
struct BoardLink {
    std::string coupleId;
    std::string inviteId;
    std::string url;

    static constexpr auto fields() {
        return std::tuple{Field{"coupleId", &BoardLink::coupleId}, Field{"inviteId", &BoardLink::inviteId},
                          Field{"url", &BoardLink::url}};
    }
    bool operator==(const BoardLink&) const = default;
};

/// The outcome of a read. A keychain that will not open is not an empty one.
struct ReadResult {
    struct Found {
        std::string data;
        bool operator==(const Found&) const = default;
    };
    struct Failed {
        SecretStatus status = SecretStatus::other;
        bool operator==(const Failed&) const = default;
    };
    struct Empty {
        bool operator==(const Empty&) const = default;
    };

    std::variant<Found, Failed, Empty> value;

    bool operator==(const ReadResult&) const = default;
};

/// This device's secrets, by account. Blocks as its store does, and is used on that store's thread.
class KeychainStore {
public:
    template <class T>
    using Result = std::expected<T, SecretStatus>;

    /// `service` differs between profiles that share one store.
    explicit KeychainStore(SecretStore& secrets, std::string service = std::string{keychainService})
        : secrets_(secrets), service_(std::move(service)) {}

    ReadResult read(std::string_view account) const;
    /// One item holds `data` afterwards, whatever was there. On an error there may be none, or the one before.
    [[nodiscard]] Result<void> save(std::string_view data, std::string_view account);
    /// There is no such item afterwards; no error when there was none.
    [[nodiscard]] Result<void> remove(std::string_view account);

    /// None when there is none, and when what is there is no board link: the room gives out another.
    Result<std::optional<BoardLink>> readBoardLink() const;
    [[nodiscard]] Result<void> saveBoardLink(const BoardLink& link);

    /// The person asks for their secrets: a store that they would not open may ask them once more. From any thread.
    void askAgain() { secrets_.askAgain(); }

private:
    SecretAddress addressOf(std::string_view account) const { return {service_, std::string{account}}; }

    SecretStore& secrets_;
    std::string service_;
};

} // namespace lumaro
