// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Pairing/PairingClient.h"

#include <array>
#include <expected>
#include <functional>
#include <string>

namespace lumaro {

/// The tokens of slot a and slot b.
using TokenPair = std::array<CoupleToken, 2>;

/// Makes one new couple of two devices, as people would: one starts a board and asks for a code, the other joins by it.
class Pairing {
public:
    using Then = std::move_only_function<void(std::expected<TokenPair, std::string>)>;

    /// The device ids end in `number`. `then` is called once and may drop this. The client outlives this.
    Pairing(PairingClient& client, std::size_t number, Then then);

private:
    template <class T>
    using Result = std::expected<T, PairingFailure>;

    void created(Result<CreatedCouple> couple);
    void coded(Result<ShareCode> code);
    void joined(Result<Joined> joined);
    /// Keeps the token; whether it is one.
    bool take(std::size_t slot, const std::string& text);
    void fail(const std::string& step, const PairingFailure& failure);
    void finish(std::expected<TokenPair, std::string> result);

    PairingClient& client_;
    std::string number_;
    Then then_;
    TokenPair tokens_;
    PairingClient::Call call_;
};

} // namespace lumaro
