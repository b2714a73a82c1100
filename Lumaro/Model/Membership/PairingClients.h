// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Lumaro/Model/Membership/Membership.h"
#include "LumaroCore/Pairing/PairingClient.h"

#include <string>
#include <utility>

namespace lumaro {

/// Makes clients of the pairing service: of this device's server, or of another.
class PairingClients {
public:
    /// `version` is this program's. All outlive this.
    PairingClients(std::string version, HttpClient& http, Log& log, const Membership& membership)
        : version_(std::move(version)), http_(http), log_(log), membership_(membership) {}

    PairingClient client() const { return client(membership_.serverURL()); }
    PairingClient client(const std::string& serverURL) const { return PairingClient{serverURL, version_, http_, log_}; }

private:
    std::string version_;
    HttpClient& http_;
    Log& log_;
    const Membership& membership_;
};

} // namespace lumaro
