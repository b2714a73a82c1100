// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/KeychainStore.h"
#include "Lumaro/Model/News/Announcer.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Services/UserDefaults.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Log.h"
#include "LumaroCore/Support/Sleeper.h"
#include "LumaroCore/Support/UUIDSource.h"

#include <array>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumaro {

/// Whether this computer can keep the token, and where.
enum class SecretPlace : std::uint8_t {
    keyring,
    asking, ///< there is no keyring: the person is asked whether a file will do
    file,   ///< of the profile, readable by this user alone; as the person said
};

constexpr std::array<std::string_view, 3> namesOf(SecretPlace) {
    return {"keyring", "asking", "file"};
}

/// Whether this device is on a board.
struct MembershipState {
    std::optional<CoupleToken> token;
    /// Pairing has happened before; with no token, this device is off its board.
    bool wasPaired = false;
    bool isRestoring = true;
    bool keychainLocked = false;
    std::string serverURL;   ///< of the board's server; empty where neither the person nor the build has named one
    bool isSettling = false; ///< a new token is on its way to its place
    SecretPlace secretPlace = SecretPlace::keyring;
};

/// Who this device is: its token, where that is kept, and the server that it is good for.
class Membership {
public:
    /// All outlive the membership. `background` may wait for a person at a keyring.
    struct Ports {
        Sleeper& sleeper;
        Log& log;
        UUIDSource& ids;
        BackgroundRunner& background;
        SecretStore& keyring;
        SecretStore& secretFile; ///< for people without a keyring who agreed to it
        UserDefaults& defaults;
    };
    struct Setup {
        std::string keychainService;
        std::string defaultServerURL; ///< where the person has named none; may be empty
    };

    class Listener {
    public:
        Listener() = default;
        Listener(const Listener&) = delete;
        Listener& operator=(const Listener&) = delete;
        virtual ~Listener() = default;

        /// The state holds a token that it did not hold before; `isAnotherBoard` when it is of another couple than the
        /// one that was here.
        virtual void cameOntoBoard(bool isAnotherBoard) = 0;
        /// The keyring still has the token of a board that an earlier run of the program left.
        virtual void foundLeftBoard(const CoupleToken& token) = 0;
        /// It is known whether this device is on a board. `isNew` when it never was and nothing hides it.
        virtual void sessionRestored(bool isNew) = 0;
    };

    Membership(Setup setup, Ports ports, MembershipState& state, Announcer& announcer, Listener& listener);
    Membership(const Membership&) = delete;
    Membership& operator=(const Membership&) = delete;
    ~Membership() = default;

    /// Reads the token: at most five times where the keychain fails, two seconds apart.
    void restore();
    /// The person asks for the keychain once more.
    void retry();

    /// The error is for people.
    using Kept = std::move_only_function<void(std::expected<void, std::string>)>;
    /// Keeps a new token and adopts it; with `serverURL`, from now on of that server. Where nothing keeps secrets the
    /// person is asked first (`SecretPlace::asking`).
    void keep(CoupleToken token, std::optional<std::string> serverURL, Kept then);
    /// The answer to `SecretPlace::asking`.
    void keepSecretsInFile(bool agreed);
    /// This device is on no board any more, and holds no token.
    void forget();

    /// From now on this device's server, while it is on no board.
    void setServerURL(const std::string& url);

    /// Stable for this installation.
    std::string deviceId();
    const std::string& serverURL() const { return state_.serverURL; }
    /// Where this device's secrets are; used on the background's thread.
    KeychainStore keychain() const;

private:
    struct Keeping {
        CoupleToken token;
        std::optional<std::string> serverURL;
        Kept then;
    };

    void readToken(int attempt);
    void tokenRead(const ReadResult& read, int attempt);
    void keychainFailed(SecretStatus status, int attempt);
    void notRestored();
    void removeToken();
    void restored(bool isNew);
    void saveToken();
    void tokenSaved(KeychainStore::Result<void> saved);
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "app", message); }

    Setup setup_;
    Ports ports_;
    MembershipState& state_;
    Announcer& announcer_;
    Listener& listener_;
    std::optional<Keeping> keeping_;
    std::unique_ptr<BackgroundRunner::Task> secretTask_;
    std::unique_ptr<Sleeper::Wait> restoreWait_;
};

} // namespace lumaro
