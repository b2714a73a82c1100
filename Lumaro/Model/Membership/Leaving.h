// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/PairingClients.h"
#include "LumaroCore/Protocol/CoupleToken.h"
#include "LumaroCore/Support/BackgroundRunner.h"
#include "LumaroCore/Support/Log.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// Tells the service that this device has left a board. Until the service has answered, what it is to be told is kept
/// among the secrets: a program that ends meanwhile says it again at its next start.
class Leaving {
public:
    /// Boards that this device has left and whose service has not heard of it; of more, the oldest are given up.
    static constexpr std::size_t maxBoards = 8;

    /// All outlive this; `background` may wait for a person at a keyring.
    struct Ports {
        BackgroundRunner& background;
        Log& log;
    };

    Leaving(Ports ports, const Membership& membership, PairingClients& service)
        : ports_(ports), membership_(membership), service_(service) {}
    Leaving(const Leaving&) = delete;
    Leaving& operator=(const Leaving&) = delete;
    ~Leaving() = default;

    void tell(const CoupleToken& token, const std::string& serverURL);
    /// Another board's key takes the place of this one's: kept from now on, told with `tell`.
    void intend(const CoupleToken& token, const std::string& serverURL);
    /// The board is not left after all.
    void callOff(const CoupleToken& token);
    /// Says again what an earlier run of the program could not. The board of `own`, which this device is on, was to be
    /// left and is not.
    void tellWhatIsKept(const std::optional<CoupleToken>& own);
    /// The network changed or the computer woke.
    void retryNow();

private:
    struct Board {
        std::string serverURL;
        CoupleToken token;
        PairingClient::Call call; ///< under way
        bool isIntended = false;  ///< nobody is told yet
    };

    Board* find(const CoupleToken& token);
    Board& add(std::string serverURL, CoupleToken token);
    void ask(Board& board);
    void answered(const CoupleToken& token, const std::expected<void, PairingFailure>& left);
    void keep();
    void log(LogLevel level, std::string_view message) { ports_.log.write(level, "app", message); }

    Ports ports_;
    const Membership& membership_;
    PairingClients& service_;
    std::vector<Board> boards_; ///< the oldest first
    bool isRead_ = false;
    bool isWritten_ = false; ///< over what an earlier run kept
    std::unique_ptr<BackgroundRunner::Task> readTask_;
    std::unique_ptr<BackgroundRunner::Task> keepTask_;
};

} // namespace lumaro
