// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/PairingClients.h"
#include "LumaroCore/Services/DownloadOrigin.h"
#include "LumaroCore/Support/BackgroundRunner.h"

#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumaro {

/// Finds the invite that waits for a first run: the one that this program was downloaded by, or one that the service
/// knows of.
class HandOff {
public:
    /// All outlive this.
    struct Ports {
        BackgroundRunner& background;
        DownloadOrigin& origin;
    };
    struct Invite {
        std::string id;
        std::optional<std::string> serverURL; ///< where its link names one
    };

    HandOff(Ports ports, const Membership& membership, PairingClients& service)
        : ports_(ports), membership_(membership), service_(service) {}
    HandOff(const HandOff&) = delete;
    HandOff& operator=(const HandOff&) = delete;
    ~HandOff() = default;

    /// Hears of an invite that is good, or why the last one that was tried is not: with status 404, none waits.
    using Found = std::move_only_function<void(const std::expected<Invite, PairingFailure>&)>;
    void look(Found then);
    /// The person was quicker: `then` is not called any more.
    void stop();

private:
    void ask(std::vector<Invite> waiting);
    void answered(std::vector<Invite> waiting, const std::expected<Handoff, PairingFailure>& answer);
    void finish(const std::expected<Invite, PairingFailure>& found);

    Ports ports_;
    const Membership& membership_;
    PairingClients& service_;
    Found then_;
    std::unique_ptr<BackgroundRunner::Task> originTask_;
    PairingClient::Call call_;
};

} // namespace lumaro
